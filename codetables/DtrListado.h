#pragma once

#include <memory>
#include <optional>
#include <string>

#include "ui/BandedReport.h"

namespace FendaMaestros {

/// What the listings of the code tables have in common: under a ruled heading, one line for each row with a short
/// column (`Texto7` under `Etiqueta7`) and a description (`Texto8` under `Etiqueta6`). Company name (`Etiqueta13`) and
/// title (`Etiqueta17`) are set when it is printed.
class DtrListado : public BandedReport {
protected:
    struct Column {
        std::string heading;
        std::string field;
    };

    DtrListado(std::string name, std::string caption, const Column& code, const Column& description);
};

/// Departments and work centres.
class DtrListadoDepartamentos final : public DtrListado {
public:
    DtrListadoDepartamentos();
};

class DtrListadoConceptos final : public DtrListado {
public:
    DtrListadoConceptos();
};

class DtrListadoMasas final : public DtrListado {
public:
    DtrListadoMasas();
};

class DtrListadoPaises final : public DtrListado {
public:
    DtrListadoPaises();
};

/// Prints the rows in their order, headed by the company's name, in a modal preview on the desktop of InstanciaActual.
/// `caption` titles the window; without it the report's own stays. Throws as BandedReport::Show does, and ErrorBd when
/// the company has no name.
void imprimirListado(DtrListado& report, const std::optional<std::string>& caption, const std::string& title,
                     std::shared_ptr<Recordset> rows);

}  // namespace FendaMaestros
