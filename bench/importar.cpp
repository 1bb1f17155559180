// 100,000 accounts from a CSV file into a new company in a database file, against the engine's own inserts of the same
// rows: one prepared statement, one row at a time, one transaction, on the same connection and with the same indexes.
// The import reads and examines the file, looks again at what the company has, and writes. Once with the bare columns
// of banks, once for customers who bring an identity each. Medians of interleaved rounds; processor and elapsed time.

#include <sqlite3.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench/Measure.h"
#include "chart/SubcuentaRecord.h"
#include "interchange/Import.h"
#include "interchange/ImportFile.h"
#include "platform/sqlite/DataFolder.h"
#include "platform/sqlite/SqliteConexion.h"
#include "storage/Insertion.h"
#include "taxid/NifRecord.h"

namespace {

using namespace FendaMaestros;
using namespace FendaMaestros::bench;

constexpr int accounts = 100'000;
constexpr int rounds = 5;

const std::filesystem::path place = std::filesystem::temp_directory_path() / "fenda-bench-importar";

/// An empty company, with pages of its own.
std::unique_ptr<SesionBd> freshCompany() {
    std::filesystem::remove_all(place / "datos");
    const sqlite::DataFolder data(place / "datos");
    data.create({.name = "Medida", .fiscalYear = 2026});
    return data.open("Medida");
}

std::string writeFile(bool identities) {
    std::string path = (place / (identities ? "clientes.csv" : "bancos.csv")).string();
    std::ofstream file(path, std::ios::binary);
    file << (identities ? "Cuenta;Nombre;NIF;Dirección;C.P.;Población\r\n" : "Cuenta;Nombre\r\n");
    for (int i = 0; i < accounts; ++i) {
        file << (identities ? 43'000'000 : 57'200'000) + i << ";Empresa número " << i * std::int64_t{7919} % accounts;
        if (identities) file << ";" << 10'000'000 + i << ";Calle Mayor " << i << ";28001;Madrid";
        file << "\r\n";
    }
    return path;
}

void import(SesionBd& session, const std::string& path) {
    const ImportFile file(path, ExchangeKind::Accounts, {});
    ImportPreview(session, ExchangeKind::Accounts, *file.rows(), file.form().columns).apply(session, false);
}

using Rows = std::vector<std::vector<Variant>>;

/// The rows that an import has stored, as values.
Rows storedRows(SesionBd& session, const std::string& table, const std::vector<std::string_view>& columns) {
    std::string names;
    for (const auto column : columns) names.append(names.empty() ? "" : ", ").append(column);
    const auto read = session.Conexion()->Execute("SELECT " + names + " FROM " + table);
    Rows rows(static_cast<std::size_t>(read->rowCount()));
    for (int row = 0; row < read->rowCount(); ++row)
        for (int column = 0; column < read->columnCount(); ++column)
            rows[static_cast<std::size_t>(row)].push_back(read->cell(row, column));
    return rows;
}

void bind(sqlite3_stmt* statement, int position, const Variant& value) {
    if (const auto* text = std::get_if<std::string>(&value.storage()))
        sqlite3_bind_text(statement, position, text->data(), static_cast<int>(text->size()), SQLITE_STATIC);
    else if (value.isNull())
        sqlite3_bind_null(statement, position);
    else
        sqlite3_bind_int64(statement, position, value.integer());
}

void insertBare(sqlite3* database, const std::string& table, const std::vector<std::string_view>& columns,
                const Rows& rows) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database, storage::insertion(table, columns).sql.c_str(), -1, &statement, nullptr);
    for (const auto& row : rows) {
        for (std::size_t i = 0; i < row.size(); ++i) bind(statement, static_cast<int>(i) + 1, row[i]);
        sqlite3_step(statement);
        sqlite3_reset(statement);
    }
    sqlite3_finalize(statement);
}

void compare(const char* name, bool identities) {
    const std::string path = writeFile(identities);
    auto session = freshCompany();
    import(*session, path);
    const Rows accountRows = storedRows(*session, "PCta WHERE PCta_Subcuenta=1", columnasSubcuenta());
    const Rows identityRows = storedRows(*session, "KXComun.dbo.Nif", columnasNif());

    std::vector<double> ours, theirs, oursElapsed, theirsElapsed, ratios;
    for (int round = 0; round < rounds; ++round) {
        session.reset();
        session = freshCompany();
        const Watch importing;
        import(*session, path);
        const Spent imported = importing.spent();

        session.reset();
        session = freshCompany();
        sqlite3* database = dynamic_cast<sqlite::SqliteConexion&>(*session->Conexion()).database().handle();
        const Watch inserting;
        session->Conexion()->BeginTrans();
        insertBare(database, "KXComun.Nif", columnasNif(), identityRows);
        insertBare(database, "PCta", columnasSubcuenta(), accountRows);
        session->Conexion()->CommitTrans();
        const Spent inserted = inserting.spent();

        ours.push_back(imported.processor), oursElapsed.push_back(imported.elapsed);
        theirs.push_back(inserted.processor), theirsElapsed.push_back(inserted.elapsed);
        ratios.push_back(imported.elapsed / inserted.elapsed);
    }
    std::printf("%-32s import %7.1f ms (%7.1f elapsed)   bare %7.1f ms (%7.1f elapsed)   ratio %.2f\n", name,
                median(ours), median(oursElapsed), median(theirs), median(theirsElapsed), median(ratios));
}

}  // namespace

int main() {
    std::filesystem::create_directories(place);
    compare("100,000 accounts", false);
    compare("100,000 accounts with identities", true);
    std::filesystem::remove_all(place);
}
