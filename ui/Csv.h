#pragma once

#include <string>
#include <vector>

#include "session/Recordset.h"

namespace FendaMaestros {

/// One line of a CSV file (RFC 4180, with ";" between the values as Spanish spreadsheets expect), its line end
/// included: a value with ";", a quote or a line break stands between quotes, its own quotes doubled.
std::string csvLine(const std::vector<std::string>& values);

/// The names of the columns of a read, and one line for each of its rows: null is empty, numbers have a decimal point.
std::string csvHeading(const Recordset& rows);
std::string csvRows(const Recordset& rows);

}  // namespace FendaMaestros
