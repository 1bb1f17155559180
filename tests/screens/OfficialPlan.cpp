#include "tests/support/CompanyTest.h"

namespace FendaMaestros::testing {
namespace {

/// Two accounts of the plan with masses, one above the other, and a balance line that the upper one is assigned to.
class OfficialPlan : public CompanyTest {
protected:
    OfficialPlan() {
        maes.MyBdorigen = &other;
        insert("KXComun.dbo.Masas (Masas_Cod, Masas_Plan, Masas_Des, Masas_AP)",
               {{"", 2008, "Existencias", 1}, {"", 2008, "Deudores", 1}});
        insert("PCta (PCta_Cta, PCta_Des, PCta_Plan, PCta_PlanSec, PCta_Subcuenta, PCta_bActiva, PCta_IdMasa)",
               {{"430", "Clientes", 2008, 7, 0, 0, 1}, {"4300", "En euros", 2008, 1, 0, 1, 2}});
        insert("KXComun.dbo.Balances (Bal_Plan, Bal_Des)", {{1990, "Antiguo"}, {2008, " Activo "}});
        insert("KXComun.dbo.BalEstruc (BalE_IdBal, BalE_Des)", {{1, "Otra"}, {2, " Deudores "}});
        insert("KXComun.dbo.BalCtas (BalC_Cta, BalC_IdBalE)", {{"430", 1}, {"430", 2}});
    }

    std::string everything() { return rows("SELECT * FROM PCta") + rows("SELECT * FROM KXComun.dbo.Masas"); }
    static std::string fields(Form& form) {
        return ScriptedPerson::text(form, account::code) + "|" + ScriptedPerson::text(form, account::name) + "|" +
               ScriptedPerson::control<ComboBox>(form, "cboMasas(0)").Text();
    }

    /// Saves again and again, the n-th statement of a connection made to fail, until it goes through; each time the
    /// person is told, both databases are as before and the screen keeps its texts.
    void failEachStatement(FailingConexion& connection, const ScriptedPerson::Visit& fill) {
        onNextScreen([&](Form& form) {
            fill(form);
            const std::string before = everything(), shown = fields(form);
            for (int n = 1;; ++n) {
                ASSERT_LT(n, 20);
                connection.failAt(n);
                person.answers = {Answer::Ok};
                person.press(form, account::save);
                const bool went = connection.seen() < n;
                connection.failAt(0);
                EXPECT_FALSE(hasOpenTransaction(*memory) || hasOpenTransaction(*otherMemory)) << n;
                EXPECT_EQ(fields(form), shown);
                if (went) {
                    EXPECT_EQ(person.answers.size(), 1U) << "a save is told in the status line alone";
                    person.answers.clear();
                    return;
                }
                EXPECT_EQ(person.messages.back().text, "Error en la grabación de la cuenta Fallo provocado");
                EXPECT_TRUE(form.isOpen());
                ASSERT_EQ(everything(), before) << "statement " << n;
            }
        });
        maes.jshowPGCMantenimiento();
    }
    void fillNew(Form& form) {
        person.answers = {Answer::Yes};
        enter(form, account::code, "4309");
        person.fill(form, account::name, "Nueva");
        person.hands.choose(form, ScriptedPerson::control<ComboBox>(form, "cboMasas(0)"), 1);
    }
    void change(Form& form) {
        enter(form, account::code, "430");
        person.fill(form, account::name, "Cambiada");
        person.hands.choose(form, ScriptedPerson::control<ComboBox>(form, "cboMasas(0)"), 2);
    }

    std::shared_ptr<ConexionBd> otherMemory = emptyCompany();
    std::shared_ptr<FailingConexion> otherFailing = std::make_shared<FailingConexion>(otherMemory);
    SesionSql other{otherFailing, parameters(2026)};
};

TEST_F(OfficialPlan, AFailureAtAnyStatementOfASaveLeavesBothDatabasesAsTheyWere) {
    failEachStatement(*failing, [&](Form& form) { fillNew(form); });
    failEachStatement(*failing, [&](Form& form) { change(form); });
    EXPECT_EQ(rows("SELECT PCta_Cta, PCta_Des, PCta_IdMasa, PCta_Plan, PCta_PlanSec, PCta_bActiva FROM PCta ORDER BY "
                   "PCta_Cta"),
              "430|Cambiada|2|2008|7|0|\n4300|En euros|2|2008|1|1|\n4309|Nueva|1|2008|1|1|\n")
        << "a change keeps the variant and the state";
}

TEST_F(OfficialPlan, AFailureOfADeleteReachesTheHostAndDeletesNothing) {
    const std::string before = everything();
    onNextScreen([&](Form& form) {
        enter(form, account::code, "4300");
        person.answers = {Answer::Yes, Answer::Yes};
        failing->failAt(1);
        person.press(form, account::remove);
    });
    EXPECT_THROW(maes.jshowPGCMantenimiento(), ErrorBd);
    EXPECT_EQ(everything(), before);
}

TEST_F(OfficialPlan, AnAccountStandsInTheBalanceOfItsNearestAncestorAndGoesOnlyWhenNothingIsPostedBelow) {
    insert("Apu (Apu_Cta, Apu_IdCta)", {{"43000001", 99}});
    onNextScreen([&](Form& form) {
        const auto stands = [&](const char* code) {
            enter(form, account::code, code);
            return ScriptedPerson::text(form, "Text1(2)") +
                   (ScriptedPerson::control(form, account::remove).Enabled ? " -" : "");
        };
        EXPECT_EQ(stands("4300"), "Activo - Deudores") << "that of another plan does not count";
        EXPECT_EQ(stands("430"), "Activo - Deudores");
        insert("PCta (PCta_Cta, PCta_Des, PCta_Plan, PCta_PlanSec, PCta_Subcuenta, PCta_bActiva)",
               {{"43", "Grupo", 2008, 1, 0, 1}, {"4309", "Sin diario", 2008, 1, 0, 1}});
        EXPECT_EQ(stands("43"), "Cuenta no asignada a balance");
        EXPECT_EQ(stands("4309"), "Activo - Deudores -");
    });
    maes.jshowPGCMantenimiento();
}

TEST_F(OfficialPlan, AListingThatCannotBeReadLeavesTheOneShown) {
    onNextScreen([&](Form& form) {
        onNextScreen([&](Form& listing) {
            person.press(listing, "cmdIniciar");
            const auto& grid = ScriptedPerson::control<DataGrid>(listing, "dbg");
            EXPECT_EQ(grid.rowCount(), 2);
            failing->failAt(1);
            pressAndRead(listing, "cmdIniciar", "Fallo provocado");
            failing->failAt(0);
            EXPECT_EQ(person.messages.back().title, "Informes del Plan General Contable");
            EXPECT_EQ(grid.rowCount(), 2);
            EXPECT_TRUE(listing.Enabled);
            EXPECT_EQ(desktop.pointer(), 0);
        });
        person.press(form, "cmdInforme");
    });
    maes.jshowPGCMantenimiento();
}

}  // namespace
}  // namespace FendaMaestros::testing
