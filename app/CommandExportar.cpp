#include "app/CommandExportar.h"

#include <stdexcept>

#include "app/CommandImportar.h"
#include "app/ListingOutput.h"
#include "interchange/Export.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

constexpr Twips columnWidth = 2000;

void writeSheet(UnattendedCompany& open, const std::string& what, const std::shared_ptr<Recordset>& rows,
                const std::string& path) {
    if (path.empty() || path == "-") throw std::invalid_argument("Falta el fichero de la hoja de cálculo.");
    Listing listing{.what = what, .rows = rows, .columns = {}};
    for (int column = 0; column < rows->columnCount(); ++column)
        listing.columns.push_back({.caption = rows->columnName(column), .width = columnWidth});
    writeListing(open, listing, {0, rows->columnName(0), true}, {ListingOutput::Kind::Xlsx, path});
}

}  // namespace

int runExportar(const Place& place, const std::string& company, const std::string& kind, const std::string& path,
                bool spreadsheet) {
    const ExchangeKind chosen = exchangeKind(kind);
    UnattendedCompany open(place, company);
    const auto rows = exportedRows(instanciaActual().sesion(), chosen);
    if (spreadsheet)
        writeSheet(open, kind, rows, path);
    else
        writeText(exportedCsv(*rows), path);
    return 0;
}

}  // namespace FendaMaestros
