#include "capi/Registry.h"
#include "capi/Texts.h"
#ifdef FENDA_WITH_POSTGRES
#include "platform/postgres/Dialect.h"
#include "storage/ReadOnly.h"
#endif
#ifdef FENDA_WITH_SQLITE
#include "platform/sqlite/Collation.h"
#include "platform/sqlite/Schema.h"
#include "platform/sqlite/SqlTranslation.h"
#include "platform/sqlite/TextFunctions.h"
#endif

/// Texts for a host's own engine. The one place of the library that knows of which engines it can speak.

using namespace FendaMaestros;
using namespace FendaMaestros::capi;

namespace {

[[noreturn, maybe_unused]] void refuseNotBuilt() {
    refuse(FENDA_NOT_BUILT, "La biblioteca se ha construido sin ese motor de datos.");
}

[[noreturn]] void refuseDialect() { refuseArgument("No hay ningún dialecto así."); }

#ifdef FENDA_WITH_SQLITE

std::string forSqlite(std::string_view text) { return sqlite::translateWithLiterals(text); }

std::string sqliteSchema(const std::string& schema, bool shared) {
    if (schema != "main" && schema != "KXComun") refuseArgument("Las tablas están en «main» o en «KXComun».");
    return sqlite::schemaSql(schema, shared ? sqlite::Contents::Shared : sqlite::Contents::Company);
}

using sqlite::compareSpanish;
using sqlite::isLike;
using sqlite::lengthOf;
using sqlite::yearOf;

#else

std::string forSqlite(std::string_view) { refuseNotBuilt(); }
std::string sqliteSchema(const std::string&, bool) { refuseNotBuilt(); }
int compareSpanish(std::string_view, std::string_view) { refuseNotBuilt(); }
bool isLike(std::string_view, std::string_view, std::string_view) { refuseNotBuilt(); }
std::int64_t lengthOf(std::string_view) { refuseNotBuilt(); }
std::optional<int> yearOf(std::string_view) { refuseNotBuilt(); }

#endif

#ifdef FENDA_WITH_POSTGRES

std::string forPostgres(std::string_view text) {
    return (storage::beginsAsWriteOfRows(text) ? postgres::translateWrite(text) : postgres::translateRead(text)).text;
}

#else

std::string forPostgres(std::string_view) { refuseNotBuilt(); }

#endif

}  // namespace

fenda_status fenda_sql_for(int32_t dialect, const char* text, char** sql) {
    return guarded([&] {
        char*& place = required(sql);
        const std::string_view screens = taken(text);
        if (dialect != FENDA_SQLITE && dialect != FENDA_POSTGRESQL) refuseDialect();
        place = given(dialect == FENDA_SQLITE ? forSqlite(screens) : forPostgres(screens));
    });
}

fenda_status fenda_schema_for(int32_t dialect, const char* schema, bool shared, char** sql) {
    return guarded([&] {
        char*& place = required(sql);
        if (dialect != FENDA_SQLITE) refuseDialect();
        place = given(sqliteSchema(std::string(taken(schema)), shared));
    });
}

fenda_status fenda_compare_spanish(const char* a, const char* b, int32_t* order) {
    return guarded([&] {
        std::int32_t& place = required(order);
        place = compareSpanish(taken(a), taken(b));
    });
}

fenda_status fenda_spanish_like(const char* pattern, const char* text, const char* escape, bool* matches) {
    return guarded([&] {
        bool& place = required(matches);
        place = isLike(taken(text), taken(pattern), takenOrNone(escape));
    });
}

fenda_status fenda_spanish_length(const char* text, int64_t* characters) {
    return guarded([&] {
        std::int64_t& place = required(characters);
        place = lengthOf(taken(text));
    });
}

fenda_status fenda_spanish_year(const char* date, int32_t* year) {
    return guarded([&] {
        std::int32_t& place = required(year);
        place = yearOf(taken(date)).value_or(0);
    });
}
