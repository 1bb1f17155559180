#pragma once

#include "platform/sqlite/Database.h"

namespace FendaMaestros::sqlite {

/// A database that stays as it is while this lives: everybody may read it, and who wants to keep a change waits.
class HeldDatabase {
public:
    /// Undoes a transaction that was cut off. Waits up to `timeout` for a program that is keeping a change.
    HeldDatabase(const std::filesystem::path& file, std::chrono::milliseconds timeout)
        : database_(file, Database::Mode::Existing, timeout) {
        database_.execute("BEGIN");
        database_.number("SELECT COUNT(*) FROM sqlite_schema");
    }

    const Database& database() const { return database_; }

private:
    Database database_;
};

}  // namespace FendaMaestros::sqlite
