#pragma once

#include <functional>
#include <string>

#include "session/ConexionBd.h"

/// What belongs together in the rows: links, and codes that stand for one thing. Reads alone, in the texts' own
/// dialect.
namespace FendaMaestros::storage {

/// Told of each fault in a Spanish sentence.
using TellFault = std::function<void(const std::string& sentence)>;

/// Looks for accounts and journal lines that are linked to what is gone, links that are half there or lead elsewhere
/// than the code beside them, and codes that more than one row has.
void checkCompanyRows(ConexionBd& connection, const TellFault& tell);

/// As above, for the shared database: documents and codes that more than one row has, and balances.
void checkSharedRows(ConexionBd& connection, const TellFault& tell);

}  // namespace FendaMaestros::storage
