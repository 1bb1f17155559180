#pragma once

#include <string>
#include <string_view>

#include "interchange/Import.h"
#include "interchange/ImportFile.h"

/// What a person is told of an import, in Spanish.
namespace FendaMaestros {

/// What becomes of a row: "nueva", "cambia", "igual", "errónea".
std::string_view wordOf(Verdict verdict);
/// "Nombre «Ana» → «Ana Ruiz», Fax «» → «5»"; "" when nothing changes.
std::string changesText(const ImportRow& row);
/// "3 nuevas, 1 con cambios, 0 iguales y 2 erróneas"
std::string countsText(const ImportCounts& counts);

/// "6 «Saldo»": a column, from 0, by its number from 1 and its heading.
std::string columnName(const ImportForm& form, int column);
/// The columns that are not imported: "4 «Saldo», 7"; "" when all are.
std::string unusedText(const ImportForm& form);

/// Writes the wrong rows as they are in the file `source`, and why, to another file that can be put right and imported.
/// Throws std::runtime_error, in Spanish, when that cannot be written or is the same one.
void writeWrongRows(const ImportPreview& preview, const ImportForm& form, const std::string& source,
                    const std::string& target);

}  // namespace FendaMaestros
