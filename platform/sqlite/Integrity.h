#pragma once

#include <string>
#include <vector>

#include "platform/sqlite/Database.h"

namespace FendaMaestros::sqlite {

/// What is wrong with the file of a database, in the engine's words, each on one line; empty when it is whole. Throws
/// ErrorBd when so much is wrong that it cannot be looked at. Indexes are compared with their tables.
std::vector<std::string> faults(const Database& database);
/// As above, at most one and without comparing indexes: in a fraction of the time.
std::vector<std::string> quickFaults(const Database& database);

}  // namespace FendaMaestros::sqlite
