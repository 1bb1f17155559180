#include "platform/sqlite/Schema.h"

#include <string_view>
#include <utility>

#include "platform/sqlite/Order.h"
#include "session/ErrorBd.h"
#include "storage/Schema.h"

namespace FendaMaestros::sqlite {

namespace {

using storage::ColumnKind;

/// What PRAGMA application_id says of our files.
constexpr std::int64_t companyFile = 0x464d4531;
constexpr std::int64_t sharedFile = 0x464d4331;

const storage::Schema& schemaOf(Contents contents) {
    return contents == Contents::Company ? storage::companySchema() : storage::sharedSchema();
}

std::int64_t applicationId(Contents contents) { return contents == Contents::Company ? companyFile : sharedFile; }

std::string_view typeOf(ColumnKind kind) {
    switch (kind) {
        case ColumnKind::Identity:
            return "INTEGER PRIMARY KEY AUTOINCREMENT";
        case ColumnKind::Integer:
            return "INTEGER";
        case ColumnKind::Amount:
            return "REAL";
        case ColumnKind::Text:
        case ColumnKind::Date:
            return "TEXT COLLATE ES";
        case ColumnKind::Any:
            break;
    }
    return "ANY";
}

std::string definition(const storage::Column& column) {
    return std::string(column.name).append(" ").append(typeOf(column.kind)) + (column.key ? " PRIMARY KEY" : "");
}

std::string creation(const std::string& schema, const storage::Table& table) {
    std::string sql = "CREATE TABLE " + schema + "." + std::string(table.name);
    const char* separator = " (";
    for (const auto& column : table.columns) sql += std::exchange(separator, ", ") + definition(column);
    return sql + ") STRICT;";
}

std::string creation(const std::string& schema, const storage::Index& index) {
    std::string sql = "CREATE INDEX " + schema + "." + std::string(index.name) + " ON " + std::string(index.table);
    const char* separator = " (";
    for (const auto* columns : {&index.columns, &index.carried})
        for (const auto column : *columns) sql.append(std::exchange(separator, ", ")).append(column);
    return sql + ");";
}

}  // namespace

std::string schemaSql(const std::string& schema, Contents contents) {
    std::string sql;
    for (const auto& table : schemaOf(contents).tables) sql += creation(schema, table);
    for (const auto& index : schemaOf(contents).indexes) sql += creation(schema, index);
    return sql;
}

void createSchema(const Database& database, const std::string& schema, Contents contents) {
    std::string sql = schemaSql(schema, contents);
    sql += "PRAGMA " + schema + ".application_id = " + std::to_string(applicationId(contents)) + ";";
    sql += "PRAGMA " + schema + ".user_version = " + std::to_string(schemaOf(contents).version) + ";";
    database.execute(sql);
    storeOrder(database, schema);
}

void checkSchema(const Database& database, const std::string& schema, Contents contents) {
    const auto what = contents == Contents::Company ? "una empresa" : "la base de datos común";
    if (database.number("PRAGMA " + schema + ".application_id") != applicationId(contents))
        throw ErrorBd(ErrorBd::Kind::NotADatabase,
                      std::string("El fichero no contiene ") + what + " de este programa.");
    storage::checkVersion(schemaOf(contents), database.number("PRAGMA " + schema + ".user_version"));
}

}  // namespace FendaMaestros::sqlite
