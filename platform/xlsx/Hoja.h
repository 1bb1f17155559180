#pragma once

#include <string>
#include <vector>

#include "session/Recordset.h"
#include "toolkit/Controls.h"

namespace FendaMaestros {

/// Throws std::runtime_error, in Spanish, when the rows are more than a sheet takes under its headings.
void checkFits(const Recordset& rows, const std::string& title);

/// Writes a workbook of one sheet with the visible columns. `path` is overwritten. Throws std::runtime_error, in
/// Spanish; the file may then be incomplete.
void writeSheet(const std::string& path, const std::string& title, const Recordset& rows,
                const std::vector<GridColumn>& columns);

}  // namespace FendaMaestros
