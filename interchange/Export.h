#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "interchange/Fields.h"
#include "session/Recordset.h"
#include "session/SesionBd.h"

namespace FendaMaestros {

/// The rows of a company under the captions of their fields, as texts: sub-accounts by code with the identity of each,
/// or identities by document. Errors as ConexionBd::Execute.
std::shared_ptr<Recordset> exportedRows(SesionBd& session, ExchangeKind kind);

/// The rows as a CSV file (ui/Csv.h) that an import takes back. A value that a spreadsheet would take for a formula has
/// an apostrophe before it.
std::string exportedCsv(const Recordset& rows);

}  // namespace FendaMaestros
