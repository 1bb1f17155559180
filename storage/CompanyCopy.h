#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

#include "session/ConexionBd.h"

namespace FendaMaestros::storage {

/// What became of the rows of one table.
struct CopiedTable {
    std::string_view name;
    std::int64_t copied = 0;
    /// Rows of the shared database that the goal had already, the same in every column.
    std::int64_t alreadyThere = 0;
};

/// Told after each block of rows, with those of the table that have been copied so far.
using CopyProgress = std::function<void(std::string_view table, std::int64_t copied)>;

/// Copies every row of a company into the empty company of another connection, and those of the shared database, with
/// their identities. `from` is read in one transaction; `to` has one open, which the caller keeps or rolls back.
///
/// When `first`, no company works with the goal's shared database yet: unless identities are registered in it, its rows
/// are replaced. Otherwise rows are added to it. Throws ErrorBd (Constraint) when a row of the goal has the key of
/// another one, and what the connections throw.
std::vector<CopiedTable> copyCompany(ConexionBd& from, ConexionBd& to, bool first, const CopyProgress& progress);

}  // namespace FendaMaestros::storage
