#include "platform/sqlite/FileAtFault.h"

#include <sqlite3.h>

#include <filesystem>
#include <string_view>

#include "platform/sqlite/Collation.h"
#include "platform/sqlite/Database.h"

namespace FendaMaestros::sqlite {

namespace {

constexpr const char* company = "main";
constexpr const char* shared = "KXComun";

/// "" for one in memory, and for one that the connection does not have.
std::string_view fileOf(sqlite3* database, const char* schema) {
    const char* name = sqlite3_db_filename(database, schema);
    return name ? name : "";
}

/// Unknown also for a connection to one database alone.
template <class Test>
AtFault theOnlyOne(sqlite3* database, Test&& test) {
    if (!sqlite3_db_filename(database, shared)) return AtFault::Unknown;
    const bool first = test(company), second = test(shared);
    if (first == second) return AtFault::Unknown;
    return first ? AtFault::Company : AtFault::Shared;
}

bool isHeld(sqlite3* database, const char* schema) {
    int own = SQLITE_LOCK_NONE;
    sqlite3_file* file = nullptr;
    sqlite3_file_control(database, schema, SQLITE_FCNTL_LOCKSTATE, &own);
    sqlite3_file_control(database, schema, SQLITE_FCNTL_FILE_POINTER, static_cast<void*>(&file));
    if (!file || !file->pMethods) return false;
    // A commit that waits for readers stays so.
    if (own >= SQLITE_LOCK_RESERVED) return own == SQLITE_LOCK_PENDING;
    int writing = 0;
    return file->pMethods->xCheckReservedLock(file, &writing) == SQLITE_OK && writing != 0;
}

/// On a connection of its own: the one that met the damage may be in the middle of anything.
bool isDamaged(std::string_view file) {
    if (file.empty()) return false;
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(file.data(), &opened, SQLITE_OPEN_READONLY, nullptr);
    const std::unique_ptr<sqlite3, CloseDatabase> database(opened);
    sqlite3_stmt* prepared = nullptr;
    if (code != SQLITE_OK) return false;
    registerCollation(opened);
    const int refused = sqlite3_prepare_v2(opened, "PRAGMA quick_check(1)", -1, &prepared, nullptr);
    const StatementHandle check(prepared);
    const int found = refused ? refused : sqlite3_step(prepared);
    if (found == SQLITE_CORRUPT || found == SQLITE_NOTADB) return true;
    return found == SQLITE_ROW &&
           reinterpret_cast<const char*>(sqlite3_column_text(prepared, 0)) != std::string_view("ok");
}

}  // namespace

AtFault heldByOthers(sqlite3* database) {
    return theOnlyOne(database, [database](const char* schema) { return isHeld(database, schema); });
}

AtFault damaged(sqlite3* database) {
    return theOnlyOne(database, [database](const char* schema) { return isDamaged(fileOf(database, schema)); });
}

bool hasJournal(sqlite3* database) {
    const auto besideOf = [database](const char* schema) {
        std::error_code ignored;
        const std::string file(fileOf(database, schema));
        return !file.empty() && std::filesystem::exists(file + "-journal", ignored);
    };
    return besideOf(company) || besideOf(shared);
}

}  // namespace FendaMaestros::sqlite
