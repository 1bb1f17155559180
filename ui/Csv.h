#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "session/Recordset.h"

namespace FendaMaestros {

/// One line of a CSV file (RFC 4180, with ";" between the values as Spanish spreadsheets expect), its line end
/// included: a value with ";", a quote or a line break stands between quotes, its own quotes doubled.
std::string csvLine(const std::vector<std::string>& values);

/// A text for a file that spreadsheets open: one that they would take for a formula gets an apostrophe before it.
std::string shieldedText(std::string text);
/// What shieldedText() was made of; any other text as it is.
std::string_view unshieldedText(std::string_view shielded);

/// The names of the columns of a read, and one line for each of its rows: null is empty, numbers have a decimal point.
std::string csvHeading(const Recordset& rows);
std::string csvRows(const Recordset& rows);

}  // namespace FendaMaestros
