#include "app/CommandIdentidades.h"

#include <array>

#include "app/ChosenWord.h"
#include "taxid/ExpresionNombre.h"
#include "taxid/InformeNif.h"
#include "ui/SessionAccess.h"

namespace FendaMaestros {

namespace {

/// What the register is ordered by, beginning with its first column.
const std::array<std::string, 7> orders{"nombre", "nif", "direccion", "postal", "poblacion", "provincia", "pais"};
constexpr std::array<const char*, 7> fields{"Nombre", "Nif_Doc", "Direcion", "Nif_Cp", "Nif_Pob", "Nif_Prov", "pais"};

}  // namespace

int runIdentidades(const Place& place, const std::string& company, const std::string& order, bool descending,
                   const ListingOutput& output) {
    const std::size_t field = order.empty() ? 0 : chosenWord("El orden", order, orders);
    UnattendedCompany open(place, company);
    const auto rows = read(sqlInformeNif(expresionNombre(), std::string(fields[field]) + (descending ? " DESC " : "")));
    if (output.kind == ListingOutput::Kind::Pdf) {
        open.desktop().writePdf(*documentoInformeNif(rows, open.desktop().today()), output.path);
        tellWritten(output.path);
        return 0;
    }
    const auto columns = columnasInformeNif();
    const Listing listing{.what = "identidades", .rows = rows, .columns = {columns.begin(), columns.end()}};
    writeListing(open, listing, {static_cast<int>(field) + 1, columns[field + 1].caption, !descending}, output);
    return 0;
}

}  // namespace FendaMaestros
