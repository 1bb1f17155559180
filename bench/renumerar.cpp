// A company of 100,000 sub-accounts and a million journal lines gets ten digits in place of eight, and eight again; the
// preview is read first, and once more in the transaction. Against the engine's own updates of the same rows, a table
// with each statement, on the same connection and with the same indexes. Medians of interleaved rounds.

#include <sqlite3.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "bench/Measure.h"
#include "platform/sqlite/DataFolder.h"
#include "platform/sqlite/SqliteConexion.h"
#include "renumbering/Renumbering.h"
#include "storage/RowWriter.h"

namespace {

using namespace FendaMaestros;
using namespace FendaMaestros::bench;

constexpr int accounts = 100'000;
constexpr int linesOfAnAccount = 10;
constexpr int rounds = 3;

const std::filesystem::path place = std::filesystem::temp_directory_path() / "fenda-bench-renumerar";

std::unique_ptr<SesionBd> open() { return sqlite::DataFolder(place).open("Medida"); }

/// Customers, suppliers, creditors and banks, each group with codes of its own.
void fill(ConexionBd& connection) {
    constexpr int groups[] = {43'000'000, 40'000'000, 41'000'000, 57'200'000};
    constexpr std::string_view accountColumns[] = {"PCta_Cta", "PCta_Des", "PCta_Subcuenta", "PCta_bActiva",
                                                   "PCta_CtaAso"};
    constexpr std::string_view lineColumns[] = {"Apu_Cta", "Apu_IdCta", "Apu_Estado", "Apu_Debe", "Apu_Haber"};
    connection.BeginTrans();
    const std::int64_t before = connection.Execute("SELECT MAX(PCta_Id) FROM PCta")->cell(0, 0).integer();
    storage::RowWriter account(connection, "PCta", accountColumns), line(connection, "Apu", lineColumns);
    const auto code = [&](int n) { return std::to_string(groups[n % std::size(groups)] + n); };
    for (int n = 0; n < accounts; ++n)
        account.add({code(n), "Empresa número " + std::to_string(n), 1, 1, n % 2 ? Variant(code(0)) : Variant()});
    account.finish();
    for (int n = 0; n < accounts * linesOfAnAccount; ++n)
        line.add({code(n % accounts), before + 1 + n % accounts, 0, n % 977 + 0.1, n % 13 + 0.2});
    line.finish();
    connection.CommitTrans();
}

struct Times {
    std::vector<double> preview, apply, bare, ratio;
};

void change(int digits, Times& times) {
    const auto session = open();
    const DigitsToChange request{digits};
    const Watch planning;
    const RenumberingPlan plan = planRenumbering(*session, request);
    times.preview.push_back(planning.spent().elapsed);
    const Watch applying;
    applyRenumbering(*session, request, plan);
    times.apply.push_back(applying.spent().elapsed);
}

/// `inserted` goes between the first four characters of a code and what stands from character `rest` on.
void changeBare(const std::string& inserted, int rest, Times& times) {
    const auto session = open();
    sqlite3* database = dynamic_cast<sqlite::SqliteConexion&>(*session->Conexion()).database().handle();
    const Watch watch;
    session->Conexion()->BeginTrans();
    for (const auto& [table, column] : {std::pair("PCta", "PCta_Cta"), {"PCta", "PCta_CtaAso"}, {"Apu", "Apu_Cta"}}) {
        const std::string name(column);
        const std::string sql = "UPDATE " + std::string(table) + " SET " + name + " = substr(" + name + ",1,4)||'" +
                                inserted + "'||substr(" + name + "," + std::to_string(rest) + ") WHERE length(" + name +
                                ") >= 8";
        if (sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
            std::printf("%s\n", sqlite3_errmsg(database));
    }
    session->Conexion()->CommitTrans();
    times.bare.push_back(watch.spent().elapsed);
    times.ratio.push_back(times.apply.back() / times.bare.back());
}

void tell(int digits, const Times& times) {
    std::printf("to %2d digits   preview %7.1f ms   apply %8.1f ms   bare %8.1f ms   ratio %.2f\n", digits,
                median(times.preview), median(times.apply), median(times.bare), median(times.ratio));
}

}  // namespace

int main() {
    std::filesystem::remove_all(place);
    sqlite::DataFolder(place).create({.name = "Medida", .fiscalYear = 2026});
    fill(*open()->Conexion());
    Times longer, shorter;
    for (int round = 0; round < rounds; ++round) {
        change(10, longer);
        change(8, shorter);
        changeBare("00", 5, longer);
        changeBare("", 7, shorter);
    }
    tell(10, longer);
    tell(8, shorter);
    std::filesystem::remove_all(place);
}
