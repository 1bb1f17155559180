#pragma once

#include <string>

#include "app/Place.h"

namespace FendaMaestros {

/// `fenda exportar`: writes the sub-accounts with their identities ("cuentas"), or the register ("identidades"), as the
/// file that `fenda importar` takes back. An empty `path` or "-" is standard output, where spreadsheets do not go.
/// Returns 0. Throws std::exception, in Spanish.
int runExportar(const Place& place, const std::string& company, const std::string& kind, const std::string& path,
                bool spreadsheet);

}  // namespace FendaMaestros
