#include "chart/CodigosCuenta.h"
#include "chartreports/FiltroCuentas.h"
#include "taxid/ExpresionNombre.h"
#include "tests/support/CompanyTest.h"
#include "ui/Screen.h"

namespace FendaMaestros::testing {
namespace {

/// A small chart: accounts of both plans and sub-accounts, one of them inactive.
class AccountLookups : public CompanyTest {
protected:
    AccountLookups() {
        insert("PCta (PCta_Cta, PCta_Des, PCta_Plan, PCta_PlanSec, PCta_Subcuenta, PCta_bActiva)",
               {{"430", "Clientes", 2008, 1, 0, 1},
                {"5720", "Bancos", 2008, 1, 0, 1},
                {"43009", "Clientes, facturas", 2008, 1, 0, 1},
                {"640", "Otra variante", 2008, 0, 0, 1},
                {"555", "Partidas", 1990, 0, 0, 1},
                {"43000002", "Beta", 0, 0, 1, 0},
                {"43000001", "Zeta", 0, 0, 1, 1},
                {"999", "Sin plan", 0, 0, 1, 1}});
    }

    /// What the search that `call` opens shows, row by row behind its title, and the row chosen: the last one.
    template <class Call>
    std::string search(const char* chosenOf, Call&& call) {
        std::string shown;
        onNextScreen([&](Form& form) {
            auto& grid = ScriptedPerson::control<DataGrid>(form, "dbgBuscar");
            shown = form.Caption + ":";
            for (int row = 0; row < grid.rowCount(); ++row)
                shown += grid.cellText(row, 0) + (grid.isInactive(row) ? " quietly;" : ";");
            person.hands.doubleClickRow(form, grid, grid.rowCount() - 1);
        });
        const std::int32_t id = call();
        return shown + " " + rows(chosenOf + std::to_string(id));
    }
    std::string searchAccount(int mode, bool plan, bool onlyActive) {
        return search("SELECT PCta_Cta FROM PCta WHERE PCta_Id = ",
                      [&] { return maes.fnBuscarCuentas(static_cast<std::int16_t>(mode), plan, onlyActive); });
    }
};

TEST_F(AccountLookups, ACodeHangsFromTheLongestAccountOfItsPlan) {
    struct {
        const char* rule;
        const char* code;
        std::int16_t year;
        const char* account;
    } cases[] = {
        {"three digits", "43000005", 2008, "430"},
        {"four digits", "57200001", 2008, "5720"},
        {"five digits first", "43009001", 2008, "43009"},
        {"later years are checked against 2008", "43000005", 2026, "430"},
        {"a shorter code as it is", "430", 2008, "430"},
        {"too short", "43", 2008, ""},
        {"plan 1990", "55500001", 1990, "555"},
        {"1990 has not the accounts of 2008", "43000005", 1990, ""},
        {"no plan of that year", "55500001", 2007, ""},
        {"the other variant of 2008", "64000001", 2008, ""},
        {"a sub-account is no account of the plan", "99900001", 2008, ""},
        {"no code", "", 2008, ""},
    };
    for (const auto& row : cases) {
        const auto account = planAccount(row.code, row.year);
        EXPECT_EQ(account ? account->Fields("PCta_Cta").Value.text() : "", row.account) << row.rule;
        EXPECT_EQ(maes.msValidaCuentaPlan(row.code, row.year, false), *row.account != '\0') << row.rule;
    }
    EXPECT_TRUE(maes.msValidaCuentaPlan("43000005", 2008)) << "asks nothing";
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

TEST_F(AccountLookups, AnUnknownCodeIsUsedOnlyWhenAPersonSaysYes) {
    person.answers = {Answer::Yes, Answer::No, Answer::No};
    EXPECT_TRUE(maes.msValidaCuentaPlan("99900001", 2009));
    EXPECT_FALSE(maes.msValidaCuentaPlan("99900001", 1990));
    EXPECT_EQ(person.messages.at(0).text,
              "Cuenta no pertenece al PGC 2009\r\nConfirma que desea trabajar con esta cuenta");
    EXPECT_EQ(person.messages.at(1).text,
              "Cuenta no pertenece al PGC 1990\r\nConfirma que desea trabajar con esta cuenta");
    EXPECT_EQ(person.messages.at(0).style, 292);
    EXPECT_EQ(person.messages.at(0).title, "");

    Asking screen;
    onNextScreen([&](Form& form) { person.press(form, "cmdPreguntar"); });
    screen.show();
    EXPECT_EQ(screen.released, std::vector<int>{key::Enter}) << "the key that answers reaches the screen on top";
}

TEST_F(AccountLookups, AccountsAreFoundByCodeAndByName) {
    const std::string byName =
        "Buscar cuentas por nombre:Beta (43000002) *** INACTIVA *** quietly;Sin plan (999);Zeta (43000001); "
        "43000001|\n";
    EXPECT_EQ(searchAccount(1, false, true), "Buscar cuentas por codigo:43000001 Zeta;999 Sin plan; 999|\n");
    EXPECT_EQ(searchAccount(1, false, false),
              "Buscar cuentas por codigo:43000001 Zeta;43000002 Beta *** INACTIVA *** quietly;999 Sin plan; 999|\n");
    EXPECT_EQ(searchAccount(2, false, true), byName);
    EXPECT_EQ(searchAccount(7, false, false), byName);
    EXPECT_EQ(searchAccount(1, true, true),
              "Buscar cuentas por codigo:430 Clientes;43009 Clientes, facturas;5720 Bancos;640 Otra variante; 640|\n");
}

TEST_F(AccountLookups, AListingShowsInactiveAccountsQuietly) {
    onNextScreen([&](Form& form) {
        const auto listed = [&](const char* state) {
            person.hands.click(form, *form.find(state));
            person.press(form, "cmdIniciar");
            const auto& grid = ScriptedPerson::control<DataGrid>(form, "dbg");
            std::string shown;
            for (int row = 0; row < grid.rowCount(); ++row)
                shown += grid.cellText(row, 2) + (grid.isInactive(row) ? " quietly;" : ";");
            return shown;
        };
        EXPECT_EQ(listed("Option1(2)"), "Zeta;Beta quietly;Sin plan;");
        EXPECT_EQ(listed("Option1(1)"), "Beta quietly;");
        EXPECT_EQ(listed("Option1(0)"), "Zeta;Sin plan;");
        auto& kind = ScriptedPerson::control<ComboBox>(form, "cboTipo");
        person.hands.choose(form, kind, static_cast<int>(TipoInforme::CuentasSubcuentas));
        EXPECT_EQ(listed("Option1(1)"), "Clientes;Beta quietly;Clientes, facturas;Bancos;Otra variante;");
    });
    maes.jshowInformePlandeCuentas();
}

TEST_F(AccountLookups, ThePlanIsThatOfTheFiscalYearUnlessTheHostSaysAnother) {
    for (const auto& [year, host, plan] : {std::tuple{2007, 0, 1990}, {2008, 0, 2008}, {2026, 1990, 1990}}) {
        SesionSql other(memory, parameters(year));
        maes.MyBd = &other;
        maes.Plan = static_cast<std::int16_t>(host);
        EXPECT_EQ(searchAccount(2, true, true) == "Buscar cuentas por nombre:Partidas (555); 555|\n", plan == 1990);
        EXPECT_EQ(maes.Plan, plan) << year;
    }
}

TEST_F(AccountLookups, ConceptsBelowAThousandAreFound) {
    memory->run({"DELETE FROM KXComun.Conceptos", {}});
    insert("KXComun.Conceptos (Conce_Cod, Conce_Des)", {{9, "Zeta"}, {10, "Alfa"}, {999, "Media"}, {1000, "Nunca"}});
    const auto chosen = [&](std::int16_t mode) {
        return search("SELECT Conce_Des FROM KXComun.dbo.Conceptos WHERE Conce_Id = ",
                      [&] { return maes.fnBuscarConceptos(mode); });
    };
    EXPECT_EQ(chosen(1), "Buscar conceptos por codigo:9;10;999; Media|\n");
    EXPECT_EQ(chosen(2), "Buscar conceptos por nombre:10;999;9; Zeta|\n");
}

TEST_F(AccountLookups, TownsAndNamesComeFromTheRegister) {
    insert("KXComun.Nif (Nif_Nom, Nif_Ape1, Nif_Ape2, Nif_Pais, Nif_CP, Nif_Pob)",
           {{"Ana", "Núñez", {}, "011", "27001", "Lugo"}, {{}, {}, "", "012", "27001", {}}});
    EXPECT_EQ(maes.FnBuscaPoblacion("011", "27001"), "Lugo");
    for (const auto& [country, code] : {std::pair("012", "27001"), {"011", "27000"}, {"011", "28001"}})
        EXPECT_EQ(maes.FnBuscaPoblacion(country, code), "") << country << code;

    for (const auto& [order, name] : {std::pair{0, "Ana Núñez "}, {1, "Núñez Ana "}, {7, "Núñez Ana "}}) {
        ParametrosEmpresa ordered = parameters(2026);
        ordered.set("PAR_ORCONTANOM", order);
        SesionSql other(memory, ordered);
        maes.MyBd = &other;
        EXPECT_EQ(rows("Select " + fnExpresionNombre() + " FROM KXComun.dbo.Nif ORDER BY Nombre"),
                  "|\n" + std::string(name) + "|\n");
    }
}

}  // namespace
}  // namespace FendaMaestros::testing
