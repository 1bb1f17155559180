#include <gtest/gtest.h>

#include "component/FendaMaes.h"
#include "platform/sqlite/Session.h"
#include "session/SesionSql.h"
#include "tests/support/Company.h"
#include "tests/support/RivalConexion.h"
#include "tests/support/ScriptedPerson.h"
#include "toolkit/Text.h"

namespace FendaMaestros::testing {
namespace {

/// A session that will not carry out updates.
class Unwilling final : public SesionBd {
public:
    explicit Unwilling(SesionBd& inner) : inner_(inner) {}
    std::shared_ptr<ConexionBd> Conexion() override { return inner_.Conexion(); }
    const ParametrosEmpresa& Parametros() const override { return inner_.Parametros(); }
    void Tabla(std::string_view name) override { inner_.Tabla(name); }
    void Reiniciar(std::int16_t fixed) override { inner_.Reiniciar(fixed); }
    ListaCampos& Campos() override { return inner_.Campos(); }
    void Condicion(std::string_view where) override { inner_.Condicion(where); }
    void Actualizar(std::string&, bool& status) override { status = false; }
    void Insertar(std::string& text, bool& status) override { inner_.Insertar(text, status); }
    void Borrar(std::string& text, bool& status) override { inner_.Borrar(text, status); }

private:
    SesionBd& inner_;
};

/// A register in memory with two entries, and a person at its screen.
class RegisterOfIdentities : public ::testing::Test {
protected:
    RegisterOfIdentities() {
        maes.MyBd = &session;
        memory->run({"INSERT INTO KXComun.dbo.Pais (Pais_Cod, Pais_Nom) VALUES (?, ?)", {"011", "España"}});
        memory->run({"INSERT INTO KXComun.dbo.PROV (PROV_COD, PROV_NOM) VALUES (?, ?)", {28, "Madrid"}});
        memory->run({"INSERT INTO KXComun.dbo.PROV (PROV_COD, PROV_NOM) VALUES (?, ?)", {99, "Extranjero"}});
        memory->run({"INSERT INTO KXComun.dbo.TVI (TVI_COD, TVI_NOM) VALUES (?, ?)", {"CL", "Calle"}});
        for (const char* document : {"A00000001", "B00000002"})
            memory->run({"INSERT INTO KXComun.dbo.Nif (Nif_TipDoc, Nif_Doc, Nif_Nom, Nif_Pais) VALUES (0, ?, ?, ?)",
                         {document, "Sociedad", "011"}});
    }

    std::string entries() { return contents(*memory, {"KXComun.dbo.Nif"}); }

    /// Fails each statement of what the button starts, in turn, until it goes through; `prepare` brings the screen to
    /// where the button is pressed, and each time finds the register as `before` says.
    void failEachStatement(const ScriptedPerson::Visit& prepare, const char* button, std::deque<Answer> failing_answers,
                           std::deque<Answer> passing_answers, int expected_statements) {
        const std::string before = entries();
        int statement = 1;
        person.visits.push_back([&](Form& form) {
            prepare(form);
            for (;; ++statement) {
                ASSERT_LE(statement, expected_statements + 1);
                const std::string document = person.text(form, "txtFields(5)");
                const std::string name = person.text(form, "txtFields(1)");
                const std::string surname = person.text(form, "txtFields(2)");
                failing->failAt(statement);
                person.answers = statement > expected_statements ? passing_answers : failing_answers;
                person.press(form, button);
                const int seen = failing->seen();
                failing->failAt(0);
                EXPECT_TRUE(person.answers.empty());
                EXPECT_EQ(desktop.pointer(), 0);
                if (statement > expected_statements) {
                    EXPECT_EQ(seen, expected_statements);
                    return;
                }
                EXPECT_EQ(person.messages.back().text, "Fallo provocado") << statement;
                EXPECT_EQ(person.messages.back().style, message::Ok);
                EXPECT_EQ(entries(), before) << statement;
                EXPECT_FALSE(hasOpenTransaction(*memory)) << statement;
                EXPECT_TRUE(form.isOpen());
                EXPECT_EQ(person.text(form, "txtFields(5)"), document);
                EXPECT_EQ(person.text(form, "txtFields(1)"), name);
                EXPECT_EQ(person.text(form, "txtFields(2)"), surname);
            }
        });
        maes.jNif();
        EXPECT_NE(entries(), before);
    }

    ScriptedPerson person;
    HeadlessDesktop desktop{person};
    ComponentRegistry components;
    std::shared_ptr<ConexionBd> memory = sqlite::openMemory();
    std::shared_ptr<RivalConexion> failing = std::make_shared<RivalConexion>(memory);
    SesionSql session{failing, parameters(2010)};
    FendaMaes maes{desktop, components};
};

/// Surnames typed before the type became C.I.F. are not stored, and yet stay on the screen until the save is done.
TEST_F(RegisterOfIdentities, AFailureAtAnyStatementOfAnInsertLeavesTheRegisterAndTheScreenAsTheyWere) {
    failEachStatement(
        [this](Form& form) {
            person.answers = {Answer::Yes};
            person.fill(form, "txtFields(5)", "C00000003");
            person.hands.choose(form, person.control<ComboBox>(form, "cboDocType"), 3);
            person.fill(form, "txtFields(1)", "Nueva");
            person.fill(form, "txtFields(2)", "Apellido");
            person.hands.choose(form, person.control<ComboBox>(form, "cboDocType"), 0);
        },
        "cmdSalvar", {Answer::Ok}, {Answer::Ok}, 7);
    EXPECT_EQ(memory->Execute("SELECT Nif_Ape1 FROM KXComun.dbo.Nif WHERE Nif_Doc = 'C00000003'")->cell(0, 0),
              Variant());
}

TEST_F(RegisterOfIdentities, AFailureAtAnyStatementOfAnUpdateLeavesTheRegisterAndTheScreenAsTheyWere) {
    failEachStatement(
        [this](Form& form) {
            person.fill(form, "txtFields(5)", "A00000001");
            person.fill(form, "txtFields(1)", "Otra");
        },
        "cmdSalvar", {Answer::Ok}, {Answer::Ok}, 5);
}

TEST_F(RegisterOfIdentities, AFailedDeleteLeavesTheEntryAndTheScreenAsTheyWere) {
    failEachStatement(
        [this](Form& form) {
            person.fill(form, "txtFields(5)", "A00000001");
            person.enter(form);
        },
        "cmdBorrar", {Answer::Yes, Answer::Ok}, {Answer::Yes}, 1);
    EXPECT_EQ(memory->Execute("SELECT Nif_Doc FROM KXComun.dbo.Nif")->cell(0, 0), Variant("B00000002"));
}

TEST_F(RegisterOfIdentities, AnUpdateThatTheSessionRefusesEndsWithoutAWord) {
    Unwilling unwilling(session);
    maes.MyBd = &unwilling;
    const std::string before = entries();
    person.visits.push_back([&](Form& form) {
        person.fill(form, "txtFields(5)", "A00000001");
        person.fill(form, "txtFields(1)", "Otra");
        person.press(form, "cmdSalvar");
        EXPECT_EQ(person.text(form, "txtFields(1)"), "Otra");
    });
    maes.jNif();
    EXPECT_TRUE(person.messages.empty());
    EXPECT_EQ(entries(), before);
    EXPECT_FALSE(hasOpenTransaction(*memory));
}

TEST_F(RegisterOfIdentities, WhateverIsTypedChangesItsOwnRowAndNothingElse) {
    const std::string hostile = "O'HARA\"; DELETE FROM NIF; -- %_[Ñ";
    const std::string before = entries();
    const std::vector<int> fields = {1, 2, 3, 45, 44, 43, 46, 47, 50, 6, 8, 7, 9};
    const auto name = [](int index) { return "txtFields(" + std::to_string(index) + ")"; };
    std::string stored;
    person.visits.push_back([&](Form& form) {
        person.hands.choose(form, person.control<ComboBox>(form, "cboDocType"), 3);
        person.answers = {Answer::Yes};
        person.fill(form, "txtFields(5)", hostile);
        for (const int index : fields) person.fill(form, name(index).c_str(), hostile);
        person.fill(form, "txtFields(49)", "1' OR 1=1");
        person.answers = {Answer::Ok};
        person.press(form, "cmdSalvar");
        person.fill(form, "txtFields(1)", "Otro'");
        person.answers = {Answer::Ok};
        person.press(form, "cmdSalvar");
        stored = entries();
        EXPECT_EQ(person.text(form, "txtFields(5)"), hostile);
        person.answers = {Answer::Yes};
        person.press(form, "cmdBorrar");
    });
    maes.jNif();
    ASSERT_TRUE(stored.starts_with(before));
    std::string row = "3|3|" + hostile + "|Otro'|" + hostile + "|" + hostile + "||" + hostile;
    for (const int length : {4, 2, 2, 2})
        row += "|" + text::trim(text::left(hostile, static_cast<std::size_t>(length)));
    EXPECT_TRUE(stored.substr(before.size()).starts_with(row + "|111|" + hostile + "|28|011|O'HARA\"; DELETE|"))
        << stored.substr(before.size());
    EXPECT_EQ(entries(), before);
}

TEST_F(RegisterOfIdentities, LeavingTheDocumentByAClickOnSaveAsksAndSavesNothing) {
    const std::string before = entries();
    person.visits.push_back([&](Form& form) {
        for (const auto& save :
             {std::function<void()>([&] { person.press(form, "cmdSalvar"); }), std::function<void()>([&] {
                  person.hands.key(form, {key::F(5), shift::None});
              })}) {
            person.answers = {Answer::No};
            person.fill(form, "txtFields(5)", "Z");
            save();
            EXPECT_EQ(form.activeControl(), form.find("txtFields(5)"));
            EXPECT_EQ(person.text(form, "txtFields(5)"), "Z");
        }
    });
    maes.jNif();
    EXPECT_EQ(entries(), before);
}

TEST_F(RegisterOfIdentities, TheKeyThatSavesGoesOnWithANewDocumentAndStopsAtAnotherEntry) {
    const KeyStroke saves{key::F(5), shift::None};
    person.visits.push_back([&](Form& form) {
        person.answers = {Answer::Yes, Answer::Ok};
        person.fill(form, "txtFields(5)", "C00000003");
        person.hands.key(form, saves);
        EXPECT_EQ(person.messages.back().text, "Grabación del nif realizada con éxito");

        person.fill(form, "txtFields(1)", "Nunca grabada");
        person.fill(form, "txtFields(5)", "B00000002");
        person.hands.key(form, saves);
        EXPECT_EQ(person.text(form, "txtFields(1)"), "Sociedad");
    });
    maes.jNif();
    EXPECT_EQ(person.messages.size(), 2u);
    EXPECT_EQ(entries().find("Nunca"), std::string::npos);
}

TEST_F(RegisterOfIdentities, AnEnterThatSaysYesLeavesTheFocusWhereTheAnswerPutsIt) {
    person.answersWithEnter = true;
    person.visits.push_back([&](Form& form) {
        person.fill(form, "txtFields(5)", "A00000001");
        person.answers = {Answer::Yes};
        person.press(form, "cmdBorrar");
        EXPECT_EQ(form.activeControl(), form.find("txtFields(5)"));
        person.hands.type(form, "Z9");
        person.answers = {Answer::Yes};
        person.hands.click(form, *form.find("txtFields(45)"));
        EXPECT_EQ(form.activeControl(), form.find("txtFields(45)"));
        person.enter(form);
        EXPECT_EQ(form.activeControl(), form.find("txtFields(44)")) << "the next Enter moves on";
    });
    maes.jNif();
}

TEST_F(RegisterOfIdentities, WhatAnotherProgramHasChangedMeanwhileIsNotWrittenOver) {
    person.answers = {Answer::Ok, Answer::Ok, Answer::Ok};
    person.visits.push_back([&](Form& form) {
        person.fill(form, "txtFields(5)", "A00000001");
        person.fill(form, "txtFields(1)", "Nuestra");
        failing->rival = {"UPDATE KXComun.dbo.Nif SET Nif_Dir = 'Suya' WHERE Nif_Doc = 'A00000001'", {}};
        person.press(form, "cmdSalvar");
        EXPECT_EQ(person.messages.back().text,
                  "Otro programa ha cambiado este CIF/NIF. Vuelva a buscarlo para ver cómo está ahora.");
        EXPECT_EQ(person.text(form, "txtFields(1)"), "Nuestra");
        EXPECT_EQ(entries().find("Nuestra"), std::string::npos);
        person.fill(form, "txtFields(5)", "A00000001");
        person.enter(form);
        EXPECT_EQ(person.text(form, "txtFields(45)"), "Suya") << "typed again, it is read again";
        for (const char* name : {"Una", "Otra"}) {
            person.fill(form, "txtFields(1)", name);
            person.press(form, "cmdSalvar");
            EXPECT_EQ(person.messages.back().text, "Grabación del nif realizada con éxito")
                << "its own saves are known";
        }
    });
    maes.jNif();
    EXPECT_NE(entries().find("|Otra|"), std::string::npos);

    person.answers = {Answer::Ok, Answer::Ok};
    person.visits.push_back([&](Form& form) {
        person.fill(form, "txtFields(5)", "B00000002");
        person.fill(form, "txtFields(1)", "Renacida");
        failing->rival = {"DELETE FROM KXComun.dbo.Nif WHERE Nif_Doc = 'B00000002'", {}};
        person.press(form, "cmdSalvar");
        EXPECT_EQ(person.messages.back().text,
                  "Otro programa ha eliminado este CIF/NIF. Si lo guarda otra vez, se crea de nuevo.");
        person.press(form, "cmdSalvar");
    });
    maes.jNif();
    EXPECT_NE(entries().find("|B00000002|Renacida|"), std::string::npos);
}

TEST_F(RegisterOfIdentities, ADocumentThatAnotherProgramHasJustCreatedIsNotStoredTwice) {
    person.answers = {Answer::Yes, Answer::Ok};
    person.visits.push_back([&](Form& form) {
        person.fill(form, "txtFields(5)", "C00000003");
        person.fill(form, "txtFields(1)", "Nuestra");
        failing->rival = {"INSERT INTO KXComun.dbo.Nif (Nif_TipDoc, Nif_Doc, Nif_Nom) VALUES (0, 'C00000003', 'Suya')",
                          {}};
        person.press(form, "cmdSalvar");
        EXPECT_EQ(person.messages.back().text, "C00000003: acaba de crearse desde otro puesto.");
        EXPECT_EQ(person.text(form, "txtFields(1)"), "Nuestra");
    });
    maes.jNif();
    EXPECT_NE(entries().find("Suya"), std::string::npos);
    EXPECT_EQ(entries().find("Nuestra"), std::string::npos);
}

}  // namespace
}  // namespace FendaMaestros::testing
