#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>

struct sqlite3;
struct sqlite3_stmt;

namespace FendaMaestros::sqlite {

struct CloseDatabase {
    void operator()(sqlite3* database) const;
};
struct FinalizeStatement {
    void operator()(sqlite3_stmt* statement) const;
};
using StatementHandle = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// One open database file with the program's collation and functions. Every failure is an ErrorBd.
class Database {
public:
    enum class Mode { Existing, Create };

    /// A database in memory.
    Database();
    Database(const std::filesystem::path& file, Mode mode, std::chrono::milliseconds busyTimeout);

    sqlite3* handle() const { return handle_.get(); }
    /// How long a statement waits for another program.
    std::chrono::milliseconds busyTimeout() const { return busyTimeout_; }
    /// Runs statements that give no rows back.
    void execute(const std::string& sql) const;
    /// The first value of the first row; 0 when there is none.
    std::int64_t number(const std::string& sql) const;
    StatementHandle prepare(const std::string& sql) const;

private:
    void open(const char* name, int flags);

    std::unique_ptr<sqlite3, CloseDatabase> handle_;
    std::chrono::milliseconds busyTimeout_{0};
};

}  // namespace FendaMaestros::sqlite
