// The chart of accounts with 1,000, 10,000 and 100,000 sub-accounts in a database file: the next free code of a group,
// the look-up of a code and a whole save at the screen, and how each grows; then the account search over 100,000, from
// the call to the texts of the first page, against the engine's own calls for the same text and collation; and centres
// and departments of 10,000 accounts onto 1,000,000 lines, against one bare write of all lines. Medians; processor
// time, of which waiting for the disk is no part, and elapsed time.

#include <sqlite3.h>
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/Measure.h"
#include "chart/CodigosCuenta.h"
#include "component/FendaMaes.h"
#include "platform/sqlite/DataFolder.h"
#include "platform/sqlite/SqlTranslation.h"
#include "platform/sqlite/SqliteConexion.h"
#include "tests/support/ScriptedPerson.h"

namespace {

using namespace FendaMaestros;
using namespace FendaMaestros::bench;
using testing::ScriptedPerson;

constexpr int digits = 8;
constexpr int rowsOfAPage = 20;

/// A company of so many sub-accounts, five in ten of them customers, three suppliers and two banks; one in fifty is
/// inactive.
class Company {
public:
    explicit Company(int accounts)
        : folder_(std::filesystem::temp_directory_path() / "fenda-bench-cuentas"), accounts_(accounts) {
        std::filesystem::remove_all(folder_);
        const sqlite::DataFolder data(folder_);
        data.create({.name = "Medida", .fiscalYear = 2026, .accountDigits = digits});
        session_ = data.openCompany("Medida");
        second_ = data.openCompany("Medida");
        maes.MyBd = session_.get();
        maes.MyBdorigen = second_.get();
        fill();
    }
    Company(const Company&) = delete;
    Company& operator=(const Company&) = delete;
    ~Company() {
        session_.reset();
        second_.reset();
        std::filesystem::remove_all(folder_);
    }

    ConexionBd& connection() { return *session_->Conexion(); }
    sqlite3* engine() { return dynamic_cast<sqlite::SqliteConexion&>(connection()).database().handle(); }
    /// So many lines of 2009, those of an account all over the journal; every account has a centre and a department.
    void fillJournal(int lines) {
        connection().BeginTrans();
        connection().run({"UPDATE PCta SET PCta_IdCen = PCta_Id, PCta_IdDpto = 1 WHERE PCta_Subcuenta = 1", {}});
        for (int n = 0; n < lines; ++n)
            connection().run(
                {"INSERT INTO Apu (Apu_Cta, Apu_CtaDes, Apu_IdCen, Apu_IdDpto, Apu_Eje) VALUES (?, ?, 0, 0, 2009)",
                 {code(static_cast<int>(std::int64_t{n} * 7919 % accounts_)), "Apunte de medida"}});
        connection().CommitTrans();
    }
    /// The code of the n-th sub-account, any n; those of a group follow each other and leave half of it free.
    std::string code(int n) const {
        const int account = n % accounts_, tens = account / 10, unit = account % 10;
        if (unit < 5) return std::to_string(43'000'001 + tens * 5 + unit);
        if (unit < 8) return std::to_string(40'000'001 + tens * 3 + unit - 5);
        return std::to_string(57'200'001 + tens * 2 + unit - 8);
    }

private:
    void fill() {
        connection().BeginTrans();
        connection().run({"INSERT INTO KXComun.dbo.Nif (Nif_TipDoc, Nif_Doc, Nif_Nom) VALUES (0, 'A00000000', ?)",
                          {"Sociedad de pruebas"}});
        for (int n = 0; n < accounts_; ++n)
            connection().run(
                {"INSERT INTO PCta (PCta_Cta, PCta_Des, PCta_Subcuenta, PCta_bActiva, PCta_IdMasa, "
                 "PCta_IdCen, PCta_IdDpto, Pcta_IdNif) VALUES (?, ?, 1, ?, 0, 0, 0, 1)",
                 {code(n), "Construcciones número " + std::to_string(std::int64_t{n} * 7919 % accounts_),
                  n % 50 == 0 ? 0 : 1}});
        connection().CommitTrans();
    }

    std::filesystem::path folder_;
    int accounts_;
    std::unique_ptr<SesionBd> session_, second_;

public:
    ScriptedPerson person;
    HeadlessDesktop desktop{person};
    ComponentRegistry components;
    FendaMaes maes{desktop, components};
};

struct Costs {
    Spent nextCode, nextOfEmptyGroup, opened, lookUp, save;
};

Costs costsWith(int accounts) {
    Company company(accounts);
    auto& connection = company.connection();
    Costs costs;
    costs.nextCode =
        measure(9, 20, [&] { nextCode(connection.Execute(highestCodeSql("430"))->cell(0, 0), "430", digits); });
    costs.nextOfEmptyGroup =
        measure(9, 5, [&] { nextCode(connection.Execute(highestCodeSql("100"))->cell(0, 0), "100", digits); });
    int n = 0;
    costs.lookUp = measure(9, 1000, [&] {
        connection.Execute("SELECT * FROM PCta WHERE PCta_Subcuenta = 1  AND PCta_Cta = '" + company.code(n += 7919) +
                           "'");
    });

    std::vector<double> openedProcessor, openedElapsed;
    const auto create = [&] {
        const Watch watch;
        company.person.visits.push_back([&](Form& form) {
            openedProcessor.push_back(watch.spent().processor);
            openedElapsed.push_back(watch.spent().elapsed);
            company.person.hands.type(form, "Cliente de medida");
            company.person.answers = {Answer::Ok};
            company.person.press(form, "cmdGuardar");
        });
        std::string code = "430";
        company.maes.CrearNuevaCuenta(code, 1, true);
        if (company.person.messages.back().text != "Grabación finalizada")
            throw std::runtime_error(company.person.messages.back().text);
        company.person.messages = {Message{}};
    };
    constexpr int saves = 21;
    costs.save = measure(saves, 1, create);
    const Variant stored =
        connection.Execute("SELECT COUNT(*) FROM PCta WHERE PCta_Des = 'Cliente de medida'")->cell(0, 0);
    if (stored.integer() != saves) throw std::runtime_error("solo se han grabado " + stored.text());
    costs.opened = {median(openedProcessor), median(openedElapsed)};
    return costs;
}

void printGrowth() {
    const struct {
        const char* name;
        Spent Costs::*cost;
    } lines[] = {{"siguiente código libre (430)", &Costs::nextCode},
                 {"siguiente código, grupo vacío", &Costs::nextOfEmptyGroup},
                 {"búsqueda de un código", &Costs::lookUp},
                 {"CrearNuevaCuenta hasta la pantalla", &Costs::opened},
                 {"alta completa en pantalla", &Costs::save}};
    const Costs costs[] = {costsWith(1'000), costsWith(10'000), costsWith(100'000)};
    std::printf("%-36s %21s %21s %21s   de 1.000 a 100.000\n", "ms: procesador (transcurrido)", "1.000", "10.000",
                "100.000");
    for (const auto& [name, cost] : lines) {
        std::printf("%-36s", name);
        for (const Costs& of : costs) std::printf(" %10.4f (%8.4f)", (of.*cost).processor, (of.*cost).elapsed);
        std::printf("   x %.1f\n", (costs[2].*cost).processor / (costs[0].*cost).processor);
    }
}

std::size_t touched = 0;

/// Steps through the text and touches each value once, copying nothing.
void bareSearch(sqlite3* database, const std::string& sql) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database, sql.c_str(), -1, &statement, nullptr);
    while (sqlite3_step(statement) == SQLITE_ROW) {
        touched += static_cast<std::size_t>(sqlite3_column_int64(statement, 0));
        for (const int column : {1, 2}) {
            touched += sqlite3_column_text(statement, column)[0];
            touched += static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
        }
    }
    sqlite3_finalize(statement);
}

void compareSearch(Company& company, std::int16_t mode, const char* name, const std::string& sql) {
    std::vector<double> ours, theirs, ratios;
    const std::string translated = sqlite::translate(sql);
    for (int round = 0; round < 11; ++round) {
        const Watch watch;
        double painted = 0;
        company.person.visits.push_back([&](Form& form) {
            const auto& list = ScriptedPerson::control<DataGrid>(form, "dbgBuscar");
            for (int row = 0; row < std::min(rowsOfAPage, list.rowCount()); ++row)
                for (int column = 0; column < static_cast<int>(list.Columns.size()); ++column)
                    touched += list.cellText(row, column).size();
            painted = watch.spent().processor;
            company.person.escape(form);
        });
        company.maes.fnBuscarCuentas(mode, false, false);
        const Watch bare;
        bareSearch(company.engine(), translated);
        ours.push_back(painted);
        theirs.push_back(bare.spent().processor);
        ratios.push_back(ours.back() / theirs.back());
    }
    std::printf("%-22s hasta la primera página %7.1f ms   motor solo %7.1f ms   razón %.2f (objetivo 1,30)\n", name,
                median(ours), median(theirs), median(ratios));
}

void printAssignment() {
    constexpr int lines = 1'000'000;
    Company company(10'000);
    company.fillJournal(lines);
    const auto write = [&](const char* set) { company.connection().run({std::string("UPDATE Apu SET ") + set, {}}); };
    const auto assign = [&] {
        company.person.visits.push_back([&](Form& form) {
            company.person.answers = {Answer::Ok};
            company.person.press(form, "Command1");
        });
        company.maes.jPlanCuentas();
    };
    constexpr const char* empty = "Apu_IdCen = 0, Apu_IdDpto = 0";
    std::vector<double> ours, processor, floors, ratios;
    for (int round = 0; round < 3; ++round) {
        write(empty);
        const Watch bare;
        write("Apu_IdCen = 1000, Apu_IdDpto = 1");
        floors.push_back(bare.spent().elapsed);
        write(empty);
        const Watch watch;
        assign();
        const Spent spent = watch.spent();
        ours.push_back(spent.elapsed);
        processor.push_back(spent.processor);
        ratios.push_back(ours.back() / floors.back());
    }
    const Variant left =
        company.connection().Execute("SELECT COUNT(*) FROM Apu WHERE Apu_IdCen = 0 OR Apu_IdDpto = 0")->cell(0, 0);
    if (left.integer() != 0) throw std::runtime_error("sin asignar: " + left.text());
    std::printf("centros al diario, %d apuntes %7.0f ms (procesador %.0f)   escritura sola %7.0f ms   razón %.2f\n",
                lines, median(ours), median(processor), median(floors), median(ratios));
}

}  // namespace

int main() {
    printGrowth();
    printAssignment();

    Company company(100'000);
    const std::string end =
        " + case PCta_bActiva when 0 then ' *** INACTIVA ***' else '' end AS Cuenta,'' AS PCta_Des FROM PCta  WHERE "
        "Pcta_Subcuenta = 1 ORDER BY Cuenta";
    compareSearch(company, 1, "búsqueda por código", "Select PCta_Id,PCta_Cta + ' ' + PCta_Des" + end);
    compareSearch(company, 2, "búsqueda por nombre", "Select PCta_Id,PCta_Des + ' (' + PCta_Cta + ')'" + end);
    std::printf("(suma %zu)\n", touched);
}
