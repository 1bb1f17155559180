// The chart listing and the checks of the chart at the screen, from the command to the bound grid, against the engine's
// own calls for the same translated text on the same connection; processor time, medians of interleaved rounds.
// Listings over 10,000 accounts, checks and sorting over 100,000, both with 1,000,000 journal lines and with a tenth of
// accounts and lines, and how each grows. What exact sums and Spanish order cost is measured against the same text with
// the engine's own sum and binary order.

#include <sqlite3.h>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include "bench/Measure.h"
#include "chartreports/FiltroCuentas.h"
#include "chartreports/VerificacionPlan.h"
#include "component/FendaMaes.h"
#include "platform/sqlite/DataFolder.h"
#include "platform/sqlite/SqlTranslation.h"
#include "platform/sqlite/SqliteConexion.h"
#include "tests/support/ScriptedPerson.h"
#include "toolkit/Text.h"

namespace {

using namespace FendaMaestros;
using namespace FendaMaestros::bench;
using testing::ScriptedPerson;

constexpr int rounds = 5;

std::size_t touched = 0;

/// Steps through a text and touches each value once by its type, copying nothing. How many rows it has.
int bareRead(sqlite3* database, const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
        throw std::runtime_error(sqlite3_errmsg(database));
    const int columns = sqlite3_column_count(statement);
    int rows = 0;
    for (; sqlite3_step(statement) == SQLITE_ROW; ++rows)
        for (int column = 0; column < columns; ++column) {
            if (sqlite3_column_type(statement, column) == SQLITE_TEXT)
                touched += sqlite3_column_text(statement, column)[0];
            else
                touched += static_cast<std::size_t>(sqlite3_column_int64(statement, column));
        }
    sqlite3_finalize(statement);
    return rows;
}

/// A company of so many customers, each with so many journal lines.
class Company {
public:
    Company(int accounts, int linesOfAnAccount)
        : accounts_(accounts),
          linesOfAnAccount_(linesOfAnAccount),
          folder_(std::filesystem::temp_directory_path() / "fenda-bench-listados") {
        std::filesystem::remove_all(folder_);
        const sqlite::DataFolder data(folder_);
        data.create({.name = "Medida", .fiscalYear = 2026, .accountDigits = 8});
        session_ = data.openCompany("Medida");
        maes.MyBd = maes.MyBdorigen = session_.get();
        fill();
    }
    Company(const Company&) = delete;
    Company& operator=(const Company&) = delete;
    ~Company() {
        session_.reset();
        std::filesystem::remove_all(folder_);
    }

    int accounts() const { return accounts_; }
    sqlite3* engine() { return dynamic_cast<sqlite::SqliteConexion&>(*session_->Conexion()).database().handle(); }

    /// Opens the listing and does something on it.
    void onListing(const std::function<void(Form&)>& visit) {
        person.visits.emplace_back(visit);
        maes.jshowInformePlandeCuentas();
    }
    void onChecks(const std::function<void(Form&)>& visit) {
        person.visits.emplace_back(visit);
        maes.jshowPGCVerificacion();
    }

private:
    void fill() {
        ConexionBd& connection = *session_->Conexion();
        connection.BeginTrans();
        for (int n = 0; n < accounts_; ++n) {
            const std::string code = std::to_string(43'000'001 + n);
            connection.run(
                {"INSERT INTO PCta (PCta_Cta, PCta_Des, PCta_Subcuenta, PCta_bActiva, PCta_IdMasa, "
                 "PCta_IdCen, PCta_IdDpto, Pcta_IdNif) VALUES (?, ?, 1, 1, 0, 0, 0, 0)",
                 {code, "Construcciones número " + std::to_string(std::int64_t{n} * 7919 % accounts_)}});
            const std::int64_t id = connection.Execute("SELECT MAX(PCta_Id) FROM PCta")->cell(0, 0).integer();
            for (int line = 0; line < linesOfAnAccount_; ++line)
                connection.run(
                    {"INSERT INTO Apu (Apu_IdCta, Apu_Cta, Apu_Eje, Apu_Estado, Apu_Debe, Apu_Haber) "
                     "VALUES (?, ?, 2026, 0, ?, ?)",
                     {id, code, (n + line) % 977 + 0.1, line % 13 + 0.2}});
        }
        connection.CommitTrans();
    }

    int accounts_;
    int linesOfAnAccount_;
    std::filesystem::path folder_;
    std::unique_ptr<SesionBd> session_;

public:
    ScriptedPerson person;
    HeadlessDesktop desktop{person};
    ComponentRegistry components;
    FendaMaes maes{desktop, components};
};

struct Ratio {
    double ours = 0, floor = 0, ratio = 0;
};

Ratio compare(const std::function<void()>& ours, const std::function<void()>& floor) {
    std::vector<double> oursTimes, floorTimes, ratios;
    for (int round = 0; round < rounds; ++round) {
        const Watch watch;
        ours();
        oursTimes.push_back(watch.spent().processor);
        const Watch bare;
        floor();
        floorTimes.push_back(bare.spent().processor);
        ratios.push_back(oursTimes.back() / floorTimes.back());
    }
    return {median(oursTimes), median(floorTimes), median(ratios)};
}

struct Work {
    const char* name;
    double aim;
    std::function<Ratio(Company&)> measured;
};

FiltroCuentas withBalances() {
    FiltroCuentas filter;
    filter.conSaldo = true;
    return filter;
}

/// A listing at the screen, prepared by `prepare`, against `texts` through the engine.
Ratio listing(Company& company, const std::function<void(Form&)>& prepare, const std::vector<std::string>& texts) {
    Ratio result;
    company.onListing([&](Form& form) {
        prepare(form);
        result = compare(
            [&] {
                company.person.press(form, "cmdIniciar");
                const auto& grid = ScriptedPerson::control<DataGrid>(form, "dbg");
                if (grid.rowCount() == 0) throw std::runtime_error("el listado está vacío");
            },
            [&] {
                for (const std::string& sql : texts) bareRead(company.engine(), sqlite::translate(sql));
            });
        company.person.escape(form);
    });
    return result;
}

void tickBalances(Form& form) { ScriptedPerson::control<CheckBox>(form, "Check1").setValue(true); }

void boundBalances(Form& form) {
    ScriptedPerson::control<TextBox>(form, "Text1(4)").Text = "1.000,00";
    ScriptedPerson::control<TextBox>(form, "Text1(5)").Text = "90.000,00";
}

std::string inexactAndBinary() {
    const std::string exact = sqlite::translate(sqlListado(withBalances(), -1, true));
    const std::string inexact = text::replaced(exact, "SUM(Apu_Debe-Apu_Haber)", "total(Apu_Debe-Apu_Haber)");
    std::string binary = text::replaced(inexact, "ORDER BY PCta_Cta", "ORDER BY PCta_Cta COLLATE BINARY");
    if (inexact == exact || binary == inexact) throw std::runtime_error("el texto del listado es ya otro: " + exact);
    return binary;
}

Ratio exactness(Company& company) {
    Ratio result;
    company.onListing([&](Form& form) {
        tickBalances(form);
        result = compare([&] { bareRead(company.engine(), sqlite::translate(sqlListado(withBalances(), -1, true))); },
                         [&] { bareRead(company.engine(), inexactAndBinary()); });
        company.person.escape(form);
    });
    return result;
}

Ratio headerSort(Company& company) {
    Ratio result;
    const std::string sql = sqlite::translate(sqlListado({}, 2, false));
    company.onListing([&](Form& form) {
        company.person.press(form, "cmdIniciar");
        auto& grid = ScriptedPerson::control<DataGrid>(form, "dbg");
        result =
            compare([&] { company.person.hands.clickHeader(form, grid, 2); }, [&] { bareRead(company.engine(), sql); });
        company.person.escape(form);
    });
    return result;
}

Ratio checks(Company& company, int which, const std::function<void()>& floor) {
    Ratio result;
    company.onChecks([&](Form& form) {
        ScriptedPerson::control<ComboBox>(form, "cboPlan").setListIndex(which);
        result = compare(
            [&] {
                if (which == 1) company.person.answers = {Answer::Ok};
                company.person.press(form, "cmdInicio");
            },
            floor);
        company.person.escape(form);
    });
    return result;
}

Ratio planCheck(Company& company) {
    sqlite3* const engine = company.engine();
    const std::string text = sqlite::translate(sqlCuentaPlan("2008", 1, "430"));
    const std::string prepared = text::replaced(text, "'430'", "?");
    return checks(company, 0, [&] {
        bareRead(engine, sqlite::translate(sqlSubcuentasActivas()));
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(engine, prepared.c_str(), -1, &statement, nullptr);
        for (int n = 0; n < company.accounts(); ++n) {
            sqlite3_bind_text(statement, 1, "430", 3, SQLITE_STATIC);
            while (sqlite3_step(statement) == SQLITE_ROW) touched += sqlite3_column_text(statement, 1)[0];
            sqlite3_reset(statement);
        }
        sqlite3_finalize(statement);
    });
}

Ratio subaccountCheck(Company& company) {
    const std::string sql = sqlite::translate(sqlSubcuentasErroneas("8"));
    return checks(company, 1, [&] { bareRead(company.engine(), sql); });
}

std::vector<Work> listings() {
    FiltroCuentas bounded;
    bounded.desdeSaldo = "1.000,00";
    bounded.hastaSaldo = "90.000,00";
    const std::string plain = sqlListado({}, -1, true);
    const std::string balances = sqlListado(withBalances(), -1, true);
    const std::string filtered = sqlListado(bounded, -1, true);
    return {
        {"listado sin saldos", 1.15, [=](Company& c) { return listing(c, [](Form&) {}, {plain}); }},
        {"listado con saldos y total", 1.15,
         [=](Company& c) {
             return listing(c, tickBalances, {balances, sqlTotal(withBalances())});
         }},
        {"suma exacta y orden español", 2.0, exactness},
        {"filtro por saldo", 1.15, [=](Company& c) { return listing(c, boundBalances, {filtered}); }},
    };
}

std::vector<Work> checksAndSorting() {
    return {{"orden por cabecera", 1.25, headerSort},
            {"verificación del plan", 1.3, planCheck},
            {"verificación de subcuentas", 1.2, subaccountCheck}};
}

void print(int accounts, int linesOfAnAccount, const std::vector<Work>& works) {
    std::vector<Ratio> small, large;
    for (auto* const measured : {&small, &large}) {
        Company company(measured == &small ? accounts / 10 : accounts, linesOfAnAccount);
        for (const Work& work : works) measured->push_back(work.measured(company));
    }
    std::printf("%d cuentas, %d apuntes: ms de procesador\n", accounts, accounts * linesOfAnAccount);
    for (std::size_t i = 0; i < works.size(); ++i)
        std::printf("  %-30s pantalla %8.1f   motor %8.1f   razón %.2f (objetivo %.2f)   exponente %.2f\n",
                    works[i].name, large[i].ours, large[i].floor, large[i].ratio, works[i].aim,
                    std::log10(large[i].ours / small[i].ours));
}

}  // namespace

int main() {
    print(10'000, 100, listings());
    print(100'000, 10, checksAndSorting());
    std::printf("(suma %zu)\n", touched);
}
