// Reads through the session against the engine's own calls on the same connection, processor time, median of
// interleaved rounds in one process: a listing of 100,000 accounts into a record set, and look-ups whose texts differ
// only in a literal.
//
// The bare side steps the same translated statement and touches each value once by its type (for texts pointer, length
// and first byte); it copies nothing. Its look-ups bind the code to a statement prepared once.

#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/sqlite/Session.h"
#include "platform/sqlite/SqlTranslation.h"
#include "platform/sqlite/SqliteConexion.h"

namespace {

using namespace FendaMaestros;

constexpr int accounts = 100'000;
constexpr int lookUps = 50'000;
constexpr int rounds = 9;

sqlite::StatementHandle prepare(sqlite3* database, const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr);
    return sqlite::StatementHandle(statement);
}

void fill(ConexionBd& connection) {
    connection.BeginTrans();
    for (int i = 0; i < accounts; ++i)
        connection.run(
            {"INSERT INTO PCta (PCta_Cta, PCta_Des, PCta_Subcuenta, PCta_bActiva, PCta_IdCen, PCta_IdDpto, "
             "Pcta_IdNif) VALUES (?, ?, ?, ?, ?, ?, ?)",
             {std::to_string(43'000'000 + i), "Cliente número " + std::to_string(i * 7919 % accounts), 1, 1, i % 12,
              i % 9, i}});
    for (int i = 0; i < accounts; ++i)
        connection.run({"INSERT INTO Apu (Apu_Cta, Apu_IdCta, Apu_Estado, Apu_Debe, Apu_Haber) VALUES (?, ?, ?, ?, ?)",
                        {std::to_string(43'000'000 + i), i + 1, 0, i / 100.0, 0.0}});
    connection.CommitTrans();
}

std::int64_t touch(sqlite3_stmt* statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
        case SQLITE_NULL:
            return 0;
        case SQLITE_INTEGER:
            return sqlite3_column_int64(statement, column);
        case SQLITE_FLOAT:
            return static_cast<std::int64_t>(sqlite3_column_double(statement, column));
        default:
            break;
    }
    const auto* text = sqlite3_column_text(statement, column);
    return text[0] + sqlite3_column_bytes(statement, column);
}

std::int64_t stepThrough(sqlite3_stmt* statement) {
    std::int64_t sum = 0;
    const int columns = sqlite3_column_count(statement);
    while (sqlite3_step(statement) == SQLITE_ROW)
        for (int i = 0; i < columns; ++i) sum += touch(statement, i);
    sqlite3_reset(statement);
    return sum;
}

double milliseconds(const std::function<void()>& work) {
    const auto start = std::clock();
    work();
    return static_cast<double>(std::clock() - start) * 1000 / CLOCKS_PER_SEC;
}

double median(std::vector<double> values) {
    std::ranges::sort(values);
    return values[values.size() / 2];
}

void compare(const char* name, const std::function<void()>& session, const std::function<void()>& bare) {
    std::vector<double> ours, theirs, ratios;
    for (int round = 0; round < rounds; ++round) {
        ours.push_back(milliseconds(session));
        theirs.push_back(milliseconds(bare));
        ratios.push_back(ours.back() / theirs.back());
    }
    std::printf("%-34s session %8.2f ms   bare %8.2f ms   ratio %.2f\n", name, median(ours), median(theirs),
                median(ratios));
}

std::int64_t checksum = 0;

void compareListing(ConexionBd& connection, sqlite3* database, const char* name, const std::string& sql) {
    const auto translated = sqlite::translate(sql);
    const auto bare = [&] { checksum += stepThrough(prepare(database, translated).get()); };
    compare(
        name, [&] { checksum += connection.Execute(sql)->RecordCount(); }, bare);
}

void compareLookUps(ConexionBd& connection, sqlite3* database, const char* name, const std::string& before,
                    const std::string& after) {
    std::vector<std::string> codes, texts;
    for (int i = 0; i < lookUps; ++i) {
        codes.push_back(std::to_string(43'000'000 + std::int64_t{i} * 7919 % accounts));
        texts.push_back(before + "'" + codes.back() + "'" + after);
    }
    const auto statement = prepare(database, sqlite::translate(before + "?" + after));
    const auto session = [&] {
        for (const auto& text : texts) checksum += connection.Execute(text)->RecordCount();
    };
    const auto bare = [&] {
        for (const auto& code : codes) {
            sqlite3_bind_text(statement.get(), 1, code.data(), static_cast<int>(code.size()), SQLITE_STATIC);
            checksum += stepThrough(statement.get());
        }
    };
    compare(name, session, bare);
}

}  // namespace

int main() {
    const auto connection = sqlite::openMemory();
    auto* database = dynamic_cast<sqlite::SqliteConexion&>(*connection).database().handle();
    fill(*connection);
    compareListing(*connection, database, "listing by code, 100,000 rows",
                   "SELECT PCta_Id,Pcta_Cta, Pcta_Des,'' AS Saldo  FROM Pcta  WHERE PCta_SubCuenta=1  AND  "
                   "PCta_bActiva = 1 ORDER BY PCta_Cta ASC ");
    compareListing(*connection, database, "listing by name, 100,000 rows",
                   "SELECT PCta_Id,Pcta_Cta, Pcta_Des,'' AS Saldo  FROM Pcta  WHERE PCta_SubCuenta=1  AND  "
                   "PCta_bActiva = 1 ORDER BY PCta_Des ASC ");
    compareListing(*connection, database, "whole table, 100,000 rows", "SELECT * FROM PCta");
    // Another blank makes another statement, about which nothing is known from the last time.
    std::string blanks;
    const std::string table = "SELECT * FROM PCta";
    compare(
        "whole table, first time", [&] { checksum += connection->Execute(table + (blanks += ' '))->RecordCount(); },
        [&] { checksum += stepThrough(prepare(database, table).get()); });
    compareLookUps(*connection, database, "look-ups, whole account, 50,000",
                   "SELECT * FROM PCta WHERE PCta_Subcuenta = 1  AND PCta_Cta = ", "");
    compareLookUps(*connection, database, "look-ups, one number, 50,000",
                   "SELECT COUNT(Apu_Id) FROM Apu WHERE Apu_Cta = ", "");
    std::printf("(checksum %lld)\n", static_cast<long long>(checksum));
}
