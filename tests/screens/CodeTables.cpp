#include <gtest/gtest.h>

#include "component/FendaMaes.h"
#include "platform/sqlite/Session.h"
#include "session/ErrorBd.h"
#include "session/SesionSql.h"
#include "tests/support/FailingConexion.h"
#include "tests/support/ScriptedPerson.h"
#include "toolkit/Text.h"

namespace FendaMaestros::testing {
namespace {

ParametrosEmpresa parameters() {
    ParametrosEmpresa made;
    made.set("Par_Ejercicio", 2026);
    made.set("Par_Nombre", "Empresa de prueba");
    return made;
}

/// A company in memory with three work centres and a person at its screens.
class CodeTables : public ::testing::Test {
protected:
    CodeTables() {
        maes.MyBd = &session;
        for (const char* centre : {"Almacén", "Oficina", "Tienda"}) insertCentre(centre);
    }

    void insertCentre(const std::string& description) {
        memory->run({"INSERT INTO Centro (Centro_Cod, Centro_Des) VALUES (?, ?)", {++lastCode, description}});
    }

    std::string centres() {
        std::string found;
        const auto rows = memory->Execute("SELECT Centro_Cod, Centro_Des FROM Centro ORDER BY Centro_Id");
        for (; !rows->Eof(); rows->MoveNext())
            found += rows->Fields("Centro_Cod").Value.text() + "=" + rows->Fields("Centro_Des").Value.text() + ";";
        return found;
    }

    static bool hasFocus(Form& form, const char* name) {
        return form.activeControl() == &ScriptedPerson::control(form, name);
    }

    int lastCode = 0;
    ScriptedPerson person;
    HeadlessDesktop desktop{person};
    ComponentRegistry components;
    std::shared_ptr<ConexionBd> memory = sqlite::openMemory();
    std::shared_ptr<FailingConexion> failing = std::make_shared<FailingConexion>(memory);
    SesionSql session{failing, parameters()};
    FendaMaes maes{desktop, components};
};

TEST_F(CodeTables, AFailureAtAnyStatementOfASaveReachesTheHostAndLeavesTheTableWhole) {
    const std::string before = centres();
    for (int statement = 1;; ++statement) {
        person.visits.push_back([&](Form& form) {
            person.fill(form, "Text1(1)", "Otro nombre");
            failing->failAt(statement);
            person.press(form, "cmdGuardar");
        });
        bool failed = false;
        try {
            maes.jCentros();
        } catch (const ErrorBd& error) {
            failed = std::string(error.what()) == "Fallo provocado";
        }
        failing->failAt(0);
        if (!failed) break;
        EXPECT_EQ(centres() == before, statement == 1) << "the first statement is the write, the others read";
        EXPECT_EQ(desktop.pointer(), 0);
        EXPECT_EQ(desktop.activeForm(), nullptr);
        ASSERT_LT(statement, 10);
    }
    EXPECT_EQ(centres(), "1=Otro nombre;2=Oficina;3=Tienda;");
}

TEST_F(CodeTables, WhateverIsTypedChangesItsOwnRowAndNothingElse) {
    const std::string hostile = "O'Hara\"; DROP TABLE Centro; -- ñ 🙂 %_";
    person.visits.push_back([&](Form& form) {
        person.fill(form, "Text1(1)", hostile + std::string(10'000, 'x'));
        person.press(form, "cmdGuardar");
    });
    maes.jCentros();
    EXPECT_EQ(centres(), "1=" + text::left(hostile + std::string(50, 'x'), 50) + ";2=Oficina;3=Tienda;");
}

TEST_F(CodeTables, TheEnterThatDismissesAMessageStaysInTheFieldAtFault) {
    person.answers = {Answer::Ok};
    person.visits.push_back([&](Form& form) {
        person.press(form, "cmdNueva");
        person.press(form, "cmdGuardar");
        EXPECT_TRUE(hasFocus(form, "Text1(0)"));
        EXPECT_TRUE(form.Tag.empty());
        person.enter(form);
        EXPECT_TRUE(hasFocus(form, "Text1(1)"));
    });
    maes.jCentros();
    ASSERT_EQ(person.messages.size(), 1u);
    EXPECT_EQ(person.messages[0].text, "Debe indicar un codigo de centro");
}

TEST_F(CodeTables, LeavingAnUnknownCodeByAClickAsksAndTheClickDoesNothingElse) {
    person.answers = {Answer::No};
    person.visits.push_back([&](Form& form) {
        person.fill(form, "Text1(0)", "77");
        person.press(form, "cmdNueva");
        EXPECT_EQ(ScriptedPerson::control<CommandButton>(form, "cmdNueva").Caption, "&Nuevo centro");
        EXPECT_EQ(person.text(form, "Text1(0)"), "1") << "No shows the first row again";
    });
    maes.jCentros();
    EXPECT_EQ(centres(), "1=Almacén;2=Oficina;3=Tienda;");
}

TEST_F(CodeTables, ATypeOfEntryIsInsertedOnceAndUpdatedFromThenOn) {
    person.visits.push_back([&](Form& concepts) { person.press(concepts, "cmdAuto"); });
    person.visits.push_back([&](Form& form) {
        person.hands.choose(form, ScriptedPerson::control<ComboBox>(form, "Combo1"), 1);
        person.press(form, "Check1(2)");
        person.press(form, "cmdGuardar");
        EXPECT_EQ(person.text(form, "Text1(2)"), "#3");
        person.press(form, "Check1(0)");
        person.press(form, "cmdGuardar");
    });
    maes.jConceptos();
    const auto rows = memory->Execute("SELECT Conce_Cod, Conce_Des, Conce_Mod FROM KXComun.dbo.Conceptos");
    ASSERT_EQ(rows->RecordCount(), 1);
    EXPECT_EQ(rows->Fields("Conce_Cod").Value, Variant(1001));
    EXPECT_EQ(rows->Fields("Conce_Des").Value, Variant("000#3#1"));
    EXPECT_EQ(rows->Fields("Conce_Mod").Value, Variant(0));
}

TEST_F(CodeTables, AMassOfUnknownNatureIsNotSavedAsAnother) {
    memory->run({"INSERT INTO KXComun.dbo.Masas (Masas_Plan, Masas_Des, Masas_AP) VALUES (2008, ?, 7)", {"Otra"}});
    person.answers = {Answer::Ok};
    person.visits.push_back([&](Form& form) {
        person.press(form, "cmdGuardar");
        EXPECT_TRUE(hasFocus(form, "cboMasas"));
    });
    maes.jMasas();
    EXPECT_EQ(memory->Execute("SELECT Masas_AP FROM KXComun.dbo.Masas")->Fields("Masas_AP").Value, Variant(7));
}

TEST_F(CodeTables, WithoutASessionTheHostIsTold) {
    maes.MyBd = nullptr;
    person.visits.push_back([](Form&) {});
    EXPECT_THROW(maes.jCentros(), std::logic_error);
}

}  // namespace
}  // namespace FendaMaestros::testing
