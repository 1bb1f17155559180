#include "platform/sqlite/Order.h"

#include <sqlite3.h>

#include "platform/sqlite/Collation.h"
#include "session/Literal.h"

namespace FendaMaestros::sqlite {

namespace {

void sortAnew(const Database& database) {
    if (hasCurrentOrder(database)) return;
    database.execute("REINDEX ES; DROP TABLE IF EXISTS Ordenacion");
    storeOrder(database, "main");
}

}  // namespace

void storeOrder(const Database& database, const std::string& schema) {
    database.execute("CREATE TABLE " + schema + ".Ordenacion (Version TEXT NOT NULL) STRICT; INSERT INTO " + schema +
                     ".Ordenacion VALUES (" + literal(orderVersion()) + ")");
}

bool hasCurrentOrder(const Database& database) {
    if (database.number("SELECT COUNT(*) FROM sqlite_schema WHERE name = 'Ordenacion'") == 0) return false;
    return database.number("SELECT COUNT(*) FROM Ordenacion WHERE Version = " + literal(orderVersion())) > 0;
}

void renewOrder(const Database& database) {
    database.execute("BEGIN EXCLUSIVE");
    try {
        sortAnew(database);
        database.execute("COMMIT");
    } catch (...) {
        sqlite3_exec(database.handle(), "ROLLBACK", nullptr, nullptr, nullptr);
        throw;
    }
}

}  // namespace FendaMaestros::sqlite
