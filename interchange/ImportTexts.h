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

/// The wrong rows as they are in the file, and why, as a CSV file that can be put right and imported.
std::string wrongRowsCsv(const ImportPreview& preview, const ImportForm& form);

}  // namespace FendaMaestros
