#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "ui/ListingGrid.h"

namespace FendaMaestros {

/// A listing as the commands give it: what the screen's grid shows.
struct Listing {
    std::string what;  ///< what its rows are, "cuentas"
    std::shared_ptr<Recordset> rows;
    std::vector<ListingColumn> columns;  ///< those of `rows`, by position; hidden ones are in no text
    std::optional<Variant> total = {};   ///< of the last column
};

/// For a terminal: columns side by side under their captions, amounts as in Spain at the right, the total at the end.
std::string tableText(const Listing& listing);
/// A line with the captions and one for each row (ui/Csv.h); amounts with decimal comma and nothing else, "-1234,56".
/// The total is none of the rows and is left out.
std::string csvText(const Listing& listing);
/// {"cuentas":[...]} with an object for each row, named by the captions ("Razón Social/Nombre" is razon_social_nombre),
/// and "total". Null stays null, numbers are numbers, texts texts.
std::string jsonText(const Listing& listing);

/// A text as JSON, its quotes included. Bytes that are no UTF-8 are taken as Latin-1.
std::string jsonString(const std::string& text);

}  // namespace FendaMaestros
