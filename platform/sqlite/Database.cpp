#include "platform/sqlite/Database.h"

#include <sqlite3.h>

#include "platform/sqlite/Check.h"
#include "platform/sqlite/Collation.h"
#include "platform/sqlite/Functions.h"

namespace FendaMaestros::sqlite {

void CloseDatabase::operator()(sqlite3* database) const { sqlite3_close_v2(database); }
void FinalizeStatement::operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }

Database::Database() { open(":memory:", SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE); }

Database::Database(const std::filesystem::path& file, Mode mode, std::chrono::milliseconds busyTimeout)
    : busyTimeout_(busyTimeout) {
    open(file.string().c_str(), SQLITE_OPEN_READWRITE | (mode == Mode::Create ? SQLITE_OPEN_CREATE : 0));
    sqlite3_busy_timeout(handle(), static_cast<int>(busyTimeout.count()));
}

void Database::open(const char* name, int flags) {
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(name, &opened, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    handle_.reset(opened);
    check(code, opened);
    sqlite3_extended_result_codes(opened, 1);
    sqlite3_db_config(opened, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_db_config(opened, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
    sqlite3_db_config(opened, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    registerCollation(opened);
    registerFunctions(opened);
}

void Database::execute(const std::string& sql) const {
    check(sqlite3_exec(handle(), sql.c_str(), nullptr, nullptr, nullptr), handle());
}

StatementHandle Database::prepare(const std::string& sql) const {
    sqlite3_stmt* statement = nullptr;
    const int code = sqlite3_prepare_v2(handle(), sql.c_str(), static_cast<int>(sql.size()), &statement, nullptr);
    check(code, handle());
    return StatementHandle(statement);
}

std::int64_t Database::number(const std::string& sql) const {
    const auto statement = prepare(sql);
    const int code = sqlite3_step(statement.get());
    check(code, handle());
    return code == SQLITE_ROW ? sqlite3_column_int64(statement.get(), 0) : 0;
}

}  // namespace FendaMaestros::sqlite
