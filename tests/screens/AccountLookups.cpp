#include <gtest/gtest.h>

#include "chart/CodigosCuenta.h"
#include "component/FendaMaes.h"
#include "platform/sqlite/Session.h"
#include "session/SesionSql.h"
#include "taxid/ExpresionNombre.h"
#include "tests/support/ScriptedPerson.h"
#include "ui/Screen.h"

namespace FendaMaestros::testing {
namespace {

ParametrosEmpresa parameters(int year, int nameOrder) {
    ParametrosEmpresa made;
    made.set("Par_Ejercicio", year);
    made.set("PAR_ORCONTANOM", nameOrder);
    return made;
}

/// A small chart: accounts of both plans and sub-accounts, one of them inactive.
class AccountLookups : public ::testing::Test {
protected:
    AccountLookups() {
        maes.MyBd = &session;
        insert("430", "Clientes", 2008, 1, 0, 1);
        insert("5720", "Bancos", 2008, 1, 0, 1);
        insert("43009", "Clientes, facturas", 2008, 1, 0, 1);
        insert("640", "Otra variante", 2008, 0, 0, 1);
        insert("555", "Partidas", 1990, 0, 0, 1);
        insert("43000002", "Beta", 0, 0, 1, 0);
        insert("43000001", "Zeta", 0, 0, 1, 1);
        insert("999", "Sin plan", 0, 0, 1, 1);
    }

    void insert(const char* code, const char* name, int plan, int variant, int sub, int active) {
        memory->run(
            {"INSERT INTO PCta (PCta_Cta, PCta_Des, PCta_Plan, PCta_PlanSec, PCta_Subcuenta, PCta_bActiva) "
             "VALUES (?, ?, ?, ?, ?, ?)",
             {code, name, plan, variant, sub, active}});
    }

    std::string codeOf(std::int32_t id) {
        const auto rows = memory->Execute("SELECT PCta_Cta FROM PCta WHERE PCta_Id = " + std::to_string(id));
        return rows->Eof() ? "" : rows->cell(0, 0).text();
    }

    /// The rows that the next search shows, and its title; the last one is chosen.
    void expectSearch(std::string& shown) {
        person.visits.push_back([&](Form& form) {
            const auto& grid = ScriptedPerson::control<DataGrid>(form, "dbgBuscar");
            shown = form.Caption + ":";
            for (int row = 0; row < grid.rowCount(); ++row) shown += grid.cellText(row, 0) + ";";
            person.hands.doubleClickRow(form, ScriptedPerson::control<DataGrid>(form, "dbgBuscar"),
                                        grid.rowCount() - 1);
        });
    }

    ScriptedPerson person;
    HeadlessDesktop desktop{person};
    ComponentRegistry components;
    std::shared_ptr<ConexionBd> memory = sqlite::openMemory();
    SesionSql session{memory, parameters(2026, 0)};
    FendaMaes maes{desktop, components};
};

TEST_F(AccountLookups, ACodeHangsFromTheLongestAccountOfItsPlan) {
    struct {
        const char* rule;
        const char* code;
        std::int16_t year;
        const char* account;
    } rows[] = {
        {"three digits", "43000005", 2008, "430"},
        {"four digits", "57200001", 2008, "5720"},
        {"five digits first", "43009001", 2008, "43009"},
        {"later years are checked against 2008", "43000005", 2026, "430"},
        {"a shorter code as it is", "430", 2008, "430"},
        {"too short", "43", 2008, ""},
        {"plan 1990", "55500001", 1990, "555"},
        {"1990 has not the accounts of 2008", "43000005", 1990, ""},
        {"no plan of that year", "55500001", 2005, ""},
        {"the other variant of 2008", "64000001", 2008, ""},
        {"a sub-account is no account of the plan", "99900001", 2008, ""},
        {"no code", "", 2008, ""},
    };
    for (const auto& row : rows) {
        const auto account = planAccount(row.code, row.year);
        EXPECT_EQ(account ? account->Fields("PCta_Cta").Value.text() : "", row.account) << row.rule;
        EXPECT_EQ(maes.msValidaCuentaPlan(row.code, row.year, false), *row.account != '\0') << row.rule;
    }
    EXPECT_TRUE(maes.msValidaCuentaPlan("43000005", 2008)) << "asks nothing";
}

TEST_F(AccountLookups, AnUnknownCodeIsUsedOnlyWhenAPersonSaysYes) {
    person.answers = {Answer::Yes, Answer::No};
    EXPECT_TRUE(maes.msValidaCuentaPlan("99900001", 2009));
    EXPECT_FALSE(maes.msValidaCuentaPlan("99900001", 1990));
    ASSERT_EQ(person.messages.size(), 2U);
    EXPECT_EQ(person.messages[0].text,
              "Cuenta no pertenece al PGC 2009\r\nConfirma que desea trabajar con esta cuenta");
    EXPECT_EQ(person.messages[1].text,
              "Cuenta no pertenece al PGC 1990\r\nConfirma que desea trabajar con esta cuenta");
    EXPECT_EQ(person.messages[0].style, 292);
    EXPECT_EQ(person.messages[0].title, "");
}

/// A screen whose button asks; it notes the keys released over it.
class Asking final : public Screen {
public:
    std::vector<int> released;

    Asking() {
        add(cmdPreguntar, "cmdPreguntar");
        cmdPreguntar.Click = [] { msValidaCuentaPlan("99900001", 2008, true); };
    }

private:
    void onKeyUp(int& code, int) override { released.push_back(code); }

    CommandButton cmdPreguntar;
};

TEST_F(AccountLookups, TheKeyThatAnswersTheQuestionReachesTheScreenOnTop) {
    Asking screen;
    person.answers = {Answer::No};
    person.visits.push_back([&](Form& form) { person.press(form, "cmdPreguntar"); });
    screen.show();
    EXPECT_EQ(screen.released, std::vector<int>{key::Enter});
}

TEST_F(AccountLookups, AccountsAreFoundByCodeAndByName) {
    struct {
        std::int16_t mode;
        bool plan, onlyActive;
        const char* shown;
        const char* chosen;
    } rows[] = {
        {1, false, true, "Buscar cuentas por codigo:43000001 Zeta;999 Sin plan;", "999"},
        {1, false, false, "Buscar cuentas por codigo:43000001 Zeta;43000002 Beta *** INACTIVA ***;999 Sin plan;",
         "999"},
        {2, false, true, "Buscar cuentas por nombre:Beta (43000002) *** INACTIVA ***;Sin plan (999);Zeta (43000001);",
         "43000001"},
        {7, false, false, "Buscar cuentas por nombre:Beta (43000002) *** INACTIVA ***;Sin plan (999);Zeta (43000001);",
         "43000001"},
        {1, true, true,
         "Buscar cuentas por codigo:430 Clientes;43009 Clientes, facturas;5720 Bancos;640 Otra variante;", "640"},
    };
    for (const auto& row : rows) {
        std::string shown;
        expectSearch(shown);
        EXPECT_EQ(codeOf(maes.fnBuscarCuentas(row.mode, row.plan, row.onlyActive)), row.chosen);
        EXPECT_EQ(shown, row.shown);
    }
    person.visits.push_back([&](Form& form) { person.escape(form); });
    EXPECT_EQ(maes.fnBuscarCuentas(1), 0);
}

TEST_F(AccountLookups, ThePlanIsThatOfTheFiscalYearUnlessTheHostSaysAnother) {
    std::string shown;
    for (const auto& [year, host, plan] : {std::tuple{2007, 0, 1990}, {2008, 0, 2008}, {2026, 1990, 1990}}) {
        SesionSql other(memory, parameters(year, 0));
        maes.MyBd = &other;
        maes.Plan = static_cast<std::int16_t>(host);
        expectSearch(shown);
        maes.fnBuscarCuentas(2, true);
        EXPECT_EQ(maes.Plan, plan) << year;
        EXPECT_EQ(shown == "Buscar cuentas por nombre:Partidas (555);", plan == 1990) << shown;
    }
}

TEST_F(AccountLookups, ConceptsBelowAThousandAreFound) {
    memory->run({"DELETE FROM KXComun.Conceptos", {}});
    const std::pair<int, const char*> concepts[] = {{9, "Zeta"}, {10, "Alfa"}, {999, "Media"}, {1000, "Nunca"}};
    for (const auto& [code, name] : concepts)
        memory->run({"INSERT INTO KXComun.Conceptos (Conce_Cod, Conce_Des) VALUES (?, ?)", {code, name}});
    std::string shown;
    const auto chosen = [&](std::int16_t mode) {
        expectSearch(shown);
        const std::int32_t id = maes.fnBuscarConceptos(mode);
        return memory->Execute("SELECT Conce_Des FROM KXComun.dbo.Conceptos WHERE Conce_Id = " + std::to_string(id))
            ->cell(0, 0)
            .text();
    };
    EXPECT_EQ(chosen(1), "Media");
    EXPECT_EQ(shown, "Buscar conceptos por codigo:9;10;999;");
    EXPECT_EQ(chosen(2), "Zeta");
    EXPECT_EQ(shown, "Buscar conceptos por nombre:10;999;9;");
}

TEST_F(AccountLookups, TownsAndNamesComeFromTheRegister) {
    memory->run(
        {"INSERT INTO KXComun.Nif (Nif_Nom, Nif_Ape1, Nif_Ape2, Nif_Pais, Nif_CP, Nif_Pob) "
         "VALUES ('Ana', 'Núñez', NULL, '011', '27001', 'Lugo'), (NULL, NULL, '', '012', '27001', NULL)",
         {}});
    EXPECT_EQ(maes.FnBuscaPoblacion("011", "27001"), "Lugo");
    EXPECT_EQ(maes.FnBuscaPoblacion("012", "27001"), "");
    EXPECT_EQ(maes.FnBuscaPoblacion("011", "28001"), "");

    for (const auto& [order, name] : {std::pair{0, "Ana Núñez "}, {1, "Núñez Ana "}, {7, "Núñez Ana "}}) {
        SesionSql other(memory, parameters(2026, order));
        maes.MyBd = &other;
        const auto rows = memory->Execute("Select " + fnExpresionNombre() + " FROM KXComun.dbo.Nif ORDER BY Nombre");
        EXPECT_EQ(rows->RecordCount(), 2);
        EXPECT_EQ(rows->cell(0, 0).text(), "");
        EXPECT_EQ(rows->cell(1, 0).text(), name);
    }
}

}  // namespace
}  // namespace FendaMaestros::testing
