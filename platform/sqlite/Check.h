#pragma once

struct sqlite3;

namespace FendaMaestros::sqlite {

/// Throws ErrorBd for every result of the engine that is no success. `database` gives the engine's own words; null
/// when it could not be opened at all.
void check(int code, sqlite3* database);

}  // namespace FendaMaestros::sqlite
