#include "capi/Components.h"

#include <variant>

#include "capi/Rows.h"
#include "toolkit/Text.h"

namespace FendaMaestros::capi {

namespace {

/// Asks the host. Throws HostFault.
template <class Call>
void ask(const char* otherwise, Call&& call) {
    if (callBack(call) == FENDA_OK) return;
    const Report reason = takeReason(otherwise);
    throw HostFault(reason.text, reason.nativeText);
}

void append(Recordset& rows, const Variant& cell) {
    struct Appending {
        Recordset& to;
        void operator()(std::monostate) const { to.appendNull(); }
        void operator()(std::int64_t value) const { to.appendInteger(value); }
        void operator()(double value) const { to.appendReal(value); }
        void operator()(const std::string& value) const { to.appendText(value); }
    };
    std::visit(Appending{rows}, cell.storage());
}

/// The rows in the columns that a grid shows, named by their captions.
std::shared_ptr<Recordset> shown(const Recordset& source, const DataGrid& grid) {
    std::vector<std::string> captions;
    std::vector<int> columns;
    for (const GridColumn& column : grid.Columns) {
        if (!column.Visible) continue;
        captions.push_back(text::trim(column.Caption));
        columns.push_back(column.SourceColumn);
    }
    auto rows = std::make_shared<Recordset>(std::move(captions));
    for (int row = 0; row < source.rowCount(); ++row)
        for (const int column : columns) append(*rows, source.cell(row, column));
    return rows;
}

class HostSpreadsheet final : public SpreadsheetExporter {
public:
    explicit HostSpreadsheet(const fenda_components& host) : host_(host) {}

    void GridToExcel(std::shared_ptr<Recordset>& source, const DataGrid& grid) override {
        const LentHandle rows(std::make_unique<RowsThing>(shown(*source, grid), true));
        ask("La aplicación no ha podido exportar el listado.",
            [&] { return host_.grid_to_excel(host_.context, sTitulo.c_str(), rows.as<fenda_rows>()); });
    }

private:
    const fenda_components& host_;
};

class HostReports final : public ReportPrinter {
public:
    HostReports(const fenda_components& host, const ObjectThing& object) : host_(host), object_(object) {}

    void jshowInforme(const std::string& sInforme, const std::string& sSQL) override {
        ask("La aplicación no ha podido mostrar el informe.", [&] {
            return host_.show_report(host_.context, object_.handleOf(MyBd), sInforme.c_str(), sSQL.c_str(),
                                     sAcotacion1.c_str(), svariables);
        });
    }

private:
    const fenda_components& host_;
    const ObjectThing& object_;
};

class HostSearch final : public HostApplication {
public:
    HostSearch(const fenda_components& host, const ObjectThing& object) : host_(host), object_(object) {}

    std::int32_t fnBuscarCuentas(std::int16_t mode, bool bTodas) override {
        std::int32_t account = 0;
        ask("La aplicación no ha podido buscar la cuenta.",
            [&] { return host_.search_accounts(host_.context, object_.handleOf(MyBd), mode, bTodas, &account); });
        return account;
    }

private:
    const fenda_components& host_;
    const ObjectThing& object_;
};

}  // namespace

void registerHostComponents(ComponentRegistry& components, const fenda_components& host, const ObjectThing& object) {
    if (host.grid_to_excel)
        components.add(SpreadsheetExporter::ProgId, [&host] { return std::make_unique<HostSpreadsheet>(host); });
    if (host.show_report)
        components.add(ReportPrinter::ProgId, [&host, &object] { return std::make_unique<HostReports>(host, object); });
    if (host.search_accounts)
        components.add(HostApplication::ProgId,
                       [&host, &object] { return std::make_unique<HostSearch>(host, object); });
}

}  // namespace FendaMaestros::capi
