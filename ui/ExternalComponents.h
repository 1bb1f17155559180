#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>

#include "session/Recordset.h"
#include "session/SesionBd.h"
#include "toolkit/Controls.h"

namespace FendaMaestros {

/// A component of the same application that lives outside this library and is created by its ProgID.
class ExternalComponent {
public:
    virtual ~ExternalComponent() = default;
};

/// "KXOFFICE.KOFFICE": exports a listing to a spreadsheet.
class SpreadsheetExporter : public ExternalComponent {
public:
    static constexpr const char* ProgId = "KXOFFICE.KOFFICE";

    /// Title of the listing; may stay empty.
    std::string sTitulo;
    /// Writes the rows laid out as the visible columns of the grid, whose own rows are not looked at. `source` may be
    /// replaced by the recordset that the caller is to go on with; its position is kept. Throws std::runtime_error, in
    /// Spanish, when nothing can be written.
    virtual void GridToExcel(std::shared_ptr<Recordset>& source, const DataGrid& grid) = 0;
};

/// "FENDAREPORTES.FendaRep": prints a listing under a layout it knows by name.
class ReportPrinter : public ExternalComponent {
public:
    static constexpr const char* ProgId = "FENDAREPORTES.FendaRep";

    SesionBd* MyBd = nullptr;
    /// The selection, printed in the heading.
    std::string sAcotacion1;
    /// 1 when balances are wanted, else 0.
    std::int16_t svariables = 0;
    /// Shows the layout `sInforme` ("PlanCuentas1", "PlanCuentasDpto", "PlanCuentasCentro", "PlanCuentasNif") over the
    /// rows of `sSQL`. Throws std::invalid_argument, in Spanish, for a layout it does not know.
    virtual void jshowInforme(const std::string& sInforme, const std::string& sSQL) = 0;
};

/// "FENDA.FENDATA": the host application.
class HostApplication : public ExternalComponent {
public:
    static constexpr const char* ProgId = "FENDA.FENDATA";

    SesionBd* MyBd = nullptr;
    /// The host's own account search, 1 by code and 2 by name; the id chosen, 0 for none.
    virtual std::int32_t fnBuscarCuentas(std::int16_t mode, bool bTodas) = 0;
};

/// Who makes which external component. The program fills it; screens ask it.
class ComponentRegistry {
public:
    using Factory = std::function<std::unique_ptr<ExternalComponent>()>;

    /// A second factory under a ProgID replaces the first.
    void add(const std::string& progId, Factory factory) { factories_[progId] = std::move(factory); }

    /// A new component of type T, known under T::ProgId. Throws std::runtime_error, in Spanish, when nobody registered
    /// it or what was registered is of another type.
    template <class T>
    std::unique_ptr<T> create() const {
        std::unique_ptr<ExternalComponent> made = createAny(T::ProgId);
        T* typed = dynamic_cast<T*>(made.get());
        if (!typed) throw std::runtime_error(std::string("El componente ") + T::ProgId + " no es del tipo esperado.");
        static_cast<void>(made.release());
        return std::unique_ptr<T>(typed);
    }

private:
    std::unique_ptr<ExternalComponent> createAny(const std::string& progId) const;

    std::map<std::string, Factory> factories_;
};

}  // namespace FendaMaestros
