#include <gtest/gtest.h>

#include "component/FendaMaes.h"
#include "platform/sqlite/Session.h"
#include "session/ErrorBd.h"
#include "session/SesionSql.h"
#include "tests/support/Company.h"
#include "tests/support/FailingConexion.h"
#include "tests/support/RivalConexion.h"
#include "tests/support/ScriptedPerson.h"

namespace FendaMaestros::testing {
namespace {

constexpr const char* failure = "Error en la grabación de la cuenta Fallo provocado";
constexpr const char* done = "Grabación finalizada";

/// A company in memory with four accounts of the plan, two sub-accounts, an identity and two journal lines.
class SubAccounts : public ::testing::Test {
protected:
    SubAccounts() {
        maes.MyBd = &session;
        maes.MyBdorigen = &session;
        for (const char* code : {"400", "430", "572", "473"})
            memory->run(
                {"INSERT INTO PCta (PCta_Cta, PCta_Des, PCta_Plan, PCta_PlanSec, PCta_Subcuenta, PCta_bActiva) "
                 "VALUES (?, 'Del plan', 2008, 1, 0, 1)",
                 {code}});
        memory->run({"INSERT INTO KXComun.dbo.Nif (Nif_Doc, Nif_Nom) VALUES ('12345678Z', 'Ana')", {}});
        for (const char* code : {"43000001", "57200000"})
            memory->run(
                {"INSERT INTO PCta (PCta_Cta, PCta_Des, PCta_Subcuenta, PCta_bActiva, Pcta_IdNif, Pcta_Origen, "
                 "Pcta_IdOrigen) VALUES (?, 'Antigua', 1, 1, 1, 7, 9)",
                 {code}});
        for (const char* text : {"", "Con texto"})
            memory->run({"INSERT INTO Apu (Apu_Cta, Apu_IdCta, Apu_CtaDes, Apu_Eje) VALUES ('43000001', ?, ?, 2009)",
                         {idOf("43000001"), text}});
    }

    Variant read(const std::string& sql) { return memory->Execute(sql)->cell(0, 0); }
    std::int64_t idOf(const std::string& code) {
        return read("SELECT PCta_Id FROM PCta WHERE PCta_Cta = '" + code + "'").integer();
    }

    std::string everything() { return contents(*memory, {"PCta", "Apu", "KXComun.dbo.Nif"}); }

    /// On the accounts' screen: saves again and again, the n-th statement of `connection` made to fail, until none is
    /// left. Each time the person is told and the screen keeps its texts; `check` looks at the data.
    void saveWithFailures(FailingConexion& connection, const std::function<void(Form&)>& fill,
                          const std::function<void(int)>& check) {
        connection.failAt(0);
        person.visits.push_back([&](Form& form) {
            fill(form);
            const std::string code = person.text(form, "Text1(0)"), name = person.text(form, "Text1(1)");
            for (int n = 1;; ++n) {
                ASSERT_LT(n, 30);
                connection.failAt(n);
                person.answers = {Answer::Ok};
                person.press(form, "cmdGuardar");
                connection.failAt(0);
                EXPECT_FALSE(hasOpenTransaction(*memory) || hasOpenTransaction(*otherMemory)) << n;
                if (person.messages.back().text == done) return;
                EXPECT_EQ(person.messages.back().text, failure) << n;
                EXPECT_TRUE(form.isOpen());
                EXPECT_EQ(person.text(form, "Text1(0)") + person.text(form, "Text1(1)"), code + name);
                check(n);
            }
        });
        maes.jPlanCuentas();
    }

    void fillNew(Form& form) {
        person.fill(form, "Text1(0)", "572,");
        person.hands.key(form, {key::Tab, shift::None});
        person.fill(form, "Text1(1)", "Banco");
    }

    ScriptedPerson person;
    HeadlessDesktop desktop{person};
    ComponentRegistry components;
    std::shared_ptr<ConexionBd> memory = sqlite::openMemory();
    std::shared_ptr<ConexionBd> otherMemory = sqlite::openMemory();
    std::shared_ptr<RivalConexion> failing = std::make_shared<RivalConexion>(memory);
    std::shared_ptr<FailingConexion> otherFailing = std::make_shared<FailingConexion>(otherMemory);
    SesionSql session{failing, parameters(2026)};
    SesionSql other{otherFailing, parameters(2026)};
    FendaMaes maes{desktop, components};
};

TEST_F(SubAccounts, AFailureAtAnyStatementOfASaveLeavesEverythingAsItWasAndTheScreenAtWork) {
    for (SesionBd* origin : {&session, &other}) {
        maes.MyBdorigen = origin;
        for (const bool isNew : {true, false}) {
            const std::string before = everything();
            saveWithFailures(
                *failing,
                [&](Form& form) {
                    if (isNew) return fillNew(form);
                    person.fill(form, "Text1(0)", "43000001");
                    person.hands.key(form, {key::Tab, shift::None});
                    person.fill(form, "Text1(1)", origin == &session ? "Nueva" : "Otra");
                },
                [&](int n) { EXPECT_EQ(everything(), before) << "statement " << n; });
            EXPECT_NE(everything(), before);
        }
        EXPECT_EQ(read("SELECT MAX(PCta_Cta) FROM PCta WHERE PCta_Des = 'Banco'").text(),
                  origin == &session ? "57200001" : "57200002");
    }
    EXPECT_EQ(read("SELECT COUNT(*) FROM Apu WHERE Apu_CtaDes = 'Nueva'"), Variant(1)) << "only where there was none";
}

TEST_F(SubAccounts, AFailureOfTheSecondSessionNeverInsertsTwice) {
    maes.MyBdorigen = &other;
    const std::string before = everything();
    saveWithFailures(
        *otherFailing, [&](Form& form) { fillNew(form); },
        [&](int n) { EXPECT_EQ(everything() == before, n == 1) << "begin, and the commit behind that of MyBd"; });
    EXPECT_EQ(read("SELECT COUNT(*) FROM PCta WHERE PCta_Des = 'Banco'"), Variant(1));
}

TEST_F(SubAccounts, AChangeOfWhichTheSecondCommitFailedIsSavedAgain) {
    maes.MyBdorigen = &other;
    saveWithFailures(
        *otherFailing,
        [&](Form& form) {
            person.fill(form, "Text1(0)", "43000001");
            person.hands.key(form, {key::Tab, shift::None});
            person.fill(form, "Text1(1)", "Nueva");
        },
        [](int) {});
    EXPECT_EQ(read("SELECT PCta_Des FROM PCta WHERE PCta_Cta = '43000001'"), Variant("Nueva"));
}

TEST_F(SubAccounts, TwoWrappersOfOneConnectionLeaveNoTraceOfASaveThatTheLastCommitLost) {
    const auto second = std::make_shared<FailingConexion>(memory);
    SesionSql same(second, parameters(2026));
    maes.MyBdorigen = &same;
    const std::string before = everything();
    saveWithFailures(
        *second, [&](Form& form) { fillNew(form); }, [&](int n) { EXPECT_EQ(everything(), before) << n; });
    EXPECT_EQ(read("SELECT COUNT(*) FROM PCta WHERE PCta_Des = 'Banco'"), Variant(1));
}

TEST_F(SubAccounts, WithoutTheSecondSessionNothingIsSavedAndThePersonIsTold) {
    maes.MyBdorigen = nullptr;
    const std::string before = everything();
    person.answers = {Answer::Ok};
    person.visits.push_back([&](Form& form) {
        fillNew(form);
        person.press(form, "cmdGuardar");
        EXPECT_EQ(person.messages.back().text,
                  "Error en la grabación de la cuenta No se ha indicado la segunda sesión de base de datos "
                  "(MyBdorigen).");
        EXPECT_EQ(person.text(form, "Text1(0)") + person.text(form, "Text1(1)"), "57200001Banco");
    });
    maes.jPlanCuentas();
    EXPECT_EQ(everything(), before);
    EXPECT_FALSE(hasOpenTransaction(*memory));
}

TEST_F(SubAccounts, ACodeThatAnotherProgramHasJustTakenIsNotGivenTwice) {
    person.answers = {Answer::Ok, Answer::Ok};
    person.visits.push_back([&](Form& form) {
        fillNew(form);
        failing->rival = {"INSERT INTO PCta (PCta_Cta, PCta_Des, PCta_Subcuenta) VALUES ('57200001', 'Suya', 1)", {}};
        person.press(form, "cmdGuardar");
        EXPECT_EQ(person.messages.back().text,
                  "Error en la grabación de la cuenta 57200001: acaba de crearse desde otro puesto.");
        EXPECT_EQ(read("SELECT MAX(PCta_Des) FROM PCta WHERE PCta_Cta = '57200001'"), Variant("Suya"));
        person.press(form, "cmdGuardar");
        EXPECT_EQ(person.messages.back().text, "Error en la grabación de la cuenta") << "seen as any repeated code";
    });
    maes.jPlanCuentas();
    EXPECT_EQ(read("SELECT COUNT(*) FROM PCta WHERE PCta_Cta = '57200001'"), Variant(1));
}

TEST_F(SubAccounts, AnAccountThatAnotherProgramHasChangedOrDeletedIsNotWrittenOver) {
    person.answers = {Answer::Ok, Answer::Ok};
    person.visits.push_back([&](Form& form) {
        person.fill(form, "Text1(1)", "Nombre nuevo");
        failing->rival = {"UPDATE PCta SET PCta_IdCen = 3 WHERE PCta_Cta = '57200000'", {}};
        person.press(form, "cmdGuardar");
        EXPECT_EQ(person.messages.back().text,
                  "Error en la grabación de la cuenta Otro programa ha cambiado la cuenta. Vuelva a buscarla para ver "
                  "cómo está ahora.");
        EXPECT_EQ(read("SELECT PCta_Des FROM PCta WHERE PCta_Cta = '57200000'"), Variant("Antigua"));
        failing->rival = {"DELETE FROM PCta WHERE PCta_Cta = '57200000'", {}};
        person.press(form, "cmdGuardar");
        EXPECT_EQ(person.messages.back().text,
                  "Error en la grabación de la cuenta Otro programa ha eliminado la cuenta. Si la guarda otra vez, se "
                  "crea de nuevo.");
        EXPECT_EQ(person.text(form, "Text1(1)"), "Nombre nuevo");
    });
    maes.jPlanCuentas(static_cast<std::int32_t>(idOf("57200000")));
}

TEST_F(SubAccounts, ASearchLeavesWhatIsHalfTypedAlone) {
    person.visits.push_back([&](Form& form) {
        person.fill(form, "Text1(2)", "70");
        person.hands.key(form, {key::F(10), shift::None});
        EXPECT_EQ(person.text(form, "Text1(2)"), "70");
        EXPECT_EQ(form.activeControl(), &ScriptedPerson::control(form, "Text1(2)"));
        person.hands.key(form, {key::F(1), shift::None});
        EXPECT_EQ(person.text(form, "Text1(2)"), "43000001");
    });
    person.visits.push_back([&](Form& plan) { person.escape(plan); });
    person.visits.push_back([&](Form& accounts) { person.enter(accounts); });
    maes.jPlanCuentas(static_cast<std::int32_t>(idOf("57200000")));
}

TEST_F(SubAccounts, WhateverIsTypedChangesItsOwnRowAndNothingElse) {
    const std::string hostile = "O'Hara\"; DROP TABLE PCta; -- ñ 🙂";
    const std::string others = read("SELECT COUNT(*) FROM PCta WHERE PCta_Des = 'Antigua'").text();
    person.visits.push_back([&](Form& form) {
        person.fill(form, "Text1(0)", "57';x2,");
        person.hands.key(form, {key::Tab, shift::None});
        EXPECT_EQ(person.text(form, "Text1(0)"), "57200001") << "only digits and the comma get in";
        person.fill(form, "Text1(1)", "  " + hostile + "  ");
        person.answers = {Answer::No};
        person.fill(form, "Text1(4)", "x' OR '1'='1");
        person.press(form, "cmdGuardar");
        EXPECT_EQ(person.messages.back().text, "Nif no encontrado, desea crearlo");
        EXPECT_EQ(person.text(form, "Text1(4)"), "");
        person.answers = {Answer::Ok};
        person.press(form, "cmdGuardar");
    });
    maes.jPlanCuentas();
    const auto row = memory->Execute("SELECT * FROM PCta WHERE PCta_Cta = '57200001'");
    EXPECT_EQ(row->Fields("PCta_Des").Value, Variant(hostile));
    EXPECT_TRUE(row->Fields("PCta_CtaAso").Value.isNull() && row->Fields("PCta_CtaIrpfAso").Value.isNull());
    EXPECT_EQ(row->Fields("PCta_IdCtaAso").Value, Variant(0));
    EXPECT_EQ(read("SELECT COUNT(*) FROM PCta WHERE PCta_Des = 'Antigua'").text(), others);
}

TEST_F(SubAccounts, AGroupWithIdentityNeedsOneAndAnExistingAccountKeepsItsOrigin) {
    person.visits.push_back([&](Form& form) {
        person.fill(form, "Text1(0)", "430,");
        person.hands.key(form, {key::Tab, shift::None});
        person.fill(form, "Text1(1)", "Cliente");
        person.answers = {Answer::Ok};
        person.press(form, "cmdGuardar");
        EXPECT_EQ(person.messages.back().text, "No ha indicado el Nif asociado");
        EXPECT_EQ(form.activeControl(), &ScriptedPerson::control(form, "Text1(4)"));
        person.enter(form);
        EXPECT_EQ(form.activeControl(), &ScriptedPerson::control(form, "Text1(6)"));
        person.fill(form, "Text1(4)", "12345678a");
        person.answers = {Answer::Ok};
        person.press(form, "cmdGuardar");
        EXPECT_EQ(person.messages.back().text, done);

        person.fill(form, "Text1(0)", "43000001");
        person.hands.key(form, {key::Tab, shift::None});
        person.answers = {Answer::Ok};
        person.press(form, "cmdGuardar");
    });
    maes.jPlanCuentas();
    EXPECT_EQ(read("SELECT Pcta_IdNif FROM PCta WHERE PCta_Cta = '43000002'"), Variant(1));
    const auto kept = memory->Execute("SELECT * FROM PCta WHERE PCta_Cta = '43000001'");
    EXPECT_EQ(kept->Fields("Pcta_Origen").Value, Variant(7));
    EXPECT_EQ(kept->Fields("Pcta_IdOrigen").Value, Variant(9));
}

TEST_F(SubAccounts, CreationGivesBackTheCodeAndLinksTheIdentity) {
    person.visits.push_back([&](Form& form) {
        EXPECT_EQ(form.activeControl(), &ScriptedPerson::control(form, "Text1(1)"));
        EXPECT_EQ(person.text(form, "Text1(4)"), "12345678Z");
        person.hands.type(form, "Cliente nuevo");
        person.answers = {Answer::Ok};
        person.press(form, "cmdGuardar");
        EXPECT_FALSE(form.isOpen());
    });
    std::string code = "430";
    EXPECT_EQ(maes.CrearNuevaCuenta(code, 1, true), "43000002");
    EXPECT_EQ(code, "43000002");
    EXPECT_EQ(read("SELECT Pcta_IdNif FROM PCta WHERE PCta_Cta = '43000002'"), Variant(1));

    // A code of the plan is repeated too; left without saving, the last code stands.
    person.visits.push_back([&](Form& form) {
        person.answers = {Answer::Ok};
        person.press(form, "cmdGuardar");
        EXPECT_FALSE(form.isOpen());
    });
    std::string repeated = "473";
    EXPECT_EQ(maes.CrearNuevaCuenta(repeated), "473");
    person.visits.push_back([&](Form& form) { person.escape(form); });
    std::string left = "57200009";
    EXPECT_EQ(maes.CrearNuevaCuenta(left), "473");
}

TEST_F(SubAccounts, OnlyTheAccountShownCanBeDeletedAndAnEnterThatSaysYesLeavesTheFocusOnTheCode) {
    person.visits.push_back([&](Form& form) {
        const auto enter = [&](const char* field, const char* code) {
            person.fill(form, field, code);
            person.enter(form);
        };
        const Control& deletes = ScriptedPerson::control(form, "cmdBorrar");
        enter("Text1(0)", "43000001");
        enter("Text1(2)", "57200000");
        EXPECT_FALSE(deletes.Enabled) << "another account without lines does not make this one deletable";
        enter("Text1(0)", "57200000");
        EXPECT_TRUE(deletes.Enabled);
        enter("Text1(0)", "572,");
        EXPECT_FALSE(deletes.Enabled) << "nothing is shown";
        EXPECT_EQ(form.activeControl(), &ScriptedPerson::control(form, "Text1(1)"));
        person.enter(form);
        EXPECT_EQ(form.activeControl(), &ScriptedPerson::control(form, "Text1(2)")) << "each Enter moves on";

        enter("Text1(0)", "57200000");
        person.answersWithEnter = true;
        person.answers = {Answer::Yes, Answer::Yes};
        person.press(form, "cmdBorrar");
        EXPECT_EQ(form.activeControl(), &ScriptedPerson::control(form, "Text1(0)"));
    });
    maes.jPlanCuentas();
    EXPECT_EQ(read("SELECT COUNT(*) FROM PCta WHERE PCta_Subcuenta = 1"), Variant(1));
}

TEST_F(SubAccounts, ACodeIsTypedOnTheNumberKeysAndAHintNeverWaitsTwice) {
    person.visits.push_back([&](Form& form) {
        person.fill(form, "Text1(0)", "-572.0");
        EXPECT_EQ(person.text(form, "Text1(0)"), "572,0");
        EXPECT_EQ(ScriptedPerson::control<Label>(form, "lblEstado").Caption, "57200000, de la cuenta 572 Del plan");
        failing->failAt(1);
        person.hands.type(form, "00");
        EXPECT_EQ(failing->seen(), 1) << "a database that does not answer is asked once";
        failing->failAt(0);
        person.hands.key(form, {key::Tab, shift::None});
        EXPECT_EQ(person.text(form, "Text1(1)"), "Antigua");
    });
    maes.jPlanCuentas();

    for (const Variant& digits : {Variant(-3), Variant(0), Variant(std::int64_t{1} << 62), Variant()}) {
        ParametrosEmpresa wrong = parameters(2026);
        wrong.set("Par_CtaNum", digits);
        SesionSql odd(failing, wrong);
        maes.MyBd = &odd;
        EXPECT_THROW(maes.jPlanCuentas(), std::runtime_error) << digits.text();
    }
}

TEST_F(SubAccounts, AFailureOfADeleteReachesTheHostAndDeletesNothing) {
    const std::string before = everything();
    person.visits.push_back([&](Form& form) {
        person.fill(form, "Text1(0)", "43000001");
        person.hands.key(form, {key::Tab, shift::None});
        EXPECT_FALSE(ScriptedPerson::control(form, "cmdBorrar").Enabled) << "it has journal lines";
        person.fill(form, "Text1(0)", "57200000");
        person.hands.key(form, {key::Tab, shift::None});
        person.answers = {Answer::Yes, Answer::Yes};
        failing->failAt(1);
        person.press(form, "cmdBorrar");
    });
    EXPECT_THROW(maes.jPlanCuentas(), ErrorBd);
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(person.messages.size(), 2u);
}

}  // namespace
}  // namespace FendaMaestros::testing
