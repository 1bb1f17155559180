#include "tests/support/CompanyTest.h"

namespace FendaMaestros::testing {
namespace {

constexpr const char* done = "Grabación del nif realizada con éxito";

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

/// A register with two entries.
class RegisterOfIdentities : public CompanyTest {
protected:
    RegisterOfIdentities() : CompanyTest(2010) {
        insert("KXComun.dbo.Pais (Pais_Cod, Pais_Nom)", {{"011", "España"}});
        insert("KXComun.dbo.PROV (PROV_COD, PROV_NOM)", {{8, "Barcelona"}, {28, "Madrid"}, {99, "Extranjero"}});
        insert("KXComun.dbo.Nif (Nif_TipDoc, Nif_Doc, Nif_Nom, Nif_Pais)",
               {{0, "A00000001", "Sociedad", "011"}, {0, "B00000002", "Segunda", "011"}});
    }

    std::string entries() { return rows("SELECT * FROM KXComun.dbo.Nif"); }

    /// Fails each statement of what the button starts, in turn, until it goes through; each time the register and the
    /// screen are as they were.
    void failEachStatement(const ScriptedPerson::Visit& prepare, const char* button, const std::deque<Answer>& answers,
                           std::size_t unasked = 0) {
        const std::string before = entries();
        onNextScreen([&](Form& form) {
            prepare(form);
            for (int statement = 1;; ++statement) {
                ASSERT_LT(statement, 20);
                const auto fields = [&] {
                    return person.text(form, identity::document) + "|" + person.text(form, identity::name) + "|" +
                           person.text(form, identity::surname);
                };
                const std::string shown = fields();
                failing->failAt(statement);
                person.answers = answers;
                person.press(form, button);
                const bool went = failing->seen() < statement;
                failing->failAt(0);
                EXPECT_EQ(desktop.pointer(), 0);
                EXPECT_FALSE(hasOpenTransaction(*memory)) << statement;
                if (went) {
                    EXPECT_EQ(person.answers.size(), unasked) << "only a failure is told";
                    person.answers.clear();
                    return;
                }
                EXPECT_EQ(person.messages.back().text, "Fallo provocado") << statement;
                EXPECT_EQ(person.messages.back().style, message::Ok);
                EXPECT_EQ(entries(), before) << statement;
                EXPECT_TRUE(form.isOpen());
                EXPECT_EQ(fields(), shown);
            }
        });
        maes.jNif();
        EXPECT_NE(entries(), before);
    }
};

/// Surnames typed before the type became C.I.F. are not stored, and yet stay on the screen until the save is done.
TEST_F(RegisterOfIdentities, AFailureAtAnyStatementOfAnInsertLeavesTheRegisterAndTheScreenAsTheyWere) {
    failEachStatement(
        [this](Form& form) {
            person.answers = {Answer::Yes};
            enter(form, identity::document, "C00000003");
            person.hands.choose(form, person.control<ComboBox>(form, identity::type), 3);
            person.fill(form, identity::name, "Nueva");
            person.fill(form, identity::surname, "Apellido");
            person.hands.choose(form, person.control<ComboBox>(form, identity::type), 0);
        },
        identity::save, {Answer::Ok});
    EXPECT_EQ(rows("SELECT Nif_Nom, Nif_Ape1 FROM KXComun.dbo.Nif WHERE Nif_Doc = 'C00000003'"), "Nueva||\n");
}

TEST_F(RegisterOfIdentities, AFailureAtAnyStatementOfAnUpdateLeavesTheRegisterAndTheScreenAsTheyWere) {
    failEachStatement(
        [this](Form& form) {
            enter(form, identity::document, "A00000001");
            person.fill(form, identity::name, "Otra");
        },
        identity::save, {Answer::Ok});
}

TEST_F(RegisterOfIdentities, AFailedDeleteLeavesTheEntryAndTheScreenAsTheyWere) {
    failEachStatement([this](Form& form) { enter(form, identity::document, "A00000001"); }, identity::remove,
                      {Answer::Yes, Answer::Ok}, 1);
    EXPECT_EQ(rows("SELECT Nif_Doc FROM KXComun.dbo.Nif"), "B00000002|\n");
}

TEST_F(RegisterOfIdentities, AnUpdateThatTheSessionRefusesEndsWithoutAWord) {
    Unwilling unwilling(session);
    maes.MyBd = &unwilling;
    const std::string before = entries();
    onNextScreen([&](Form& form) {
        enter(form, identity::document, "A00000001");
        person.fill(form, identity::name, "Otra");
        person.press(form, identity::save);
        EXPECT_EQ(person.text(form, identity::name), "Otra");
    });
    maes.jNif();
    EXPECT_TRUE(person.messages.empty());
    EXPECT_EQ(entries(), before);
    EXPECT_FALSE(hasOpenTransaction(*memory));
}

TEST_F(RegisterOfIdentities, WhateverIsTypedChangesItsOwnRowAndNothingElse) {
    const std::string hostile = "O'HARA\"; DELETE FROM NIF; -- %_[Ñ";
    const std::string before = entries();
    onNextScreen([&](Form& form) {
        person.hands.choose(form, person.control<ComboBox>(form, identity::type), 3);
        person.answers = {Answer::Yes};
        enter(form, identity::document, hostile);
        for (const char* field : {identity::name, identity::surname, identity::street, identity::number})
            person.fill(form, field, hostile);
        pressAndRead(form, identity::save, done);
        person.fill(form, identity::name, "Otro'");
        pressAndRead(form, identity::save, done);
        EXPECT_EQ(rows("SELECT Nif_Doc, Nif_Nom, Nif_Ape1, Nif_Dir, Nif_Num FROM KXComun.dbo.Nif WHERE Nif_Id = 3"),
                  hostile + "|Otro'|" + hostile + "|" + hostile + "|O'HA|\n");
        person.answers = {Answer::Yes};
        person.press(form, identity::remove);
    });
    maes.jNif();
    EXPECT_EQ(entries(), before);
}

TEST_F(RegisterOfIdentities, AnEnterThatSaysYesLeavesTheFocusWhereTheAnswerPutsIt) {
    person.answersWithEnter = true;
    onNextScreen([&](Form& form) {
        person.fill(form, identity::document, "A00000001");
        person.answers = {Answer::Yes};
        person.press(form, identity::remove);
        expectFocus(form, identity::document);
        person.hands.type(form, "Z9");
        person.answers = {Answer::Yes};
        person.hands.click(form, *form.find(identity::street));
        expectFocus(form, identity::street);
        person.enter(form);
        expectFocus(form, identity::number);
    });
    maes.jNif();
}

TEST_F(RegisterOfIdentities, WithASingleInvoiceNothingIsDeletedAndWithoutAProvinceThePostalCodeTellsIt) {
    insert("Fac (Fac_Doc)", {{"B00000002"}});
    memory->run({"UPDATE KXComun.Nif SET Nif_CP = '08001' WHERE Nif_Doc = 'B00000002'", {}});
    onNextScreen([&](Form& form) {
        const auto& provinces = ScriptedPerson::control<ComboBox>(form, "cboProvincias");
        const auto& removes = ScriptedPerson::control(form, identity::remove);
        enter(form, identity::document, "A00000001");
        EXPECT_TRUE(removes.Enabled);
        EXPECT_EQ(provinces.Text(), "");
        enter(form, identity::document, "B00000002");
        EXPECT_FALSE(removes.Enabled);
        EXPECT_EQ(provinces.Text(), "08 - Barcelona");
    });
    maes.jNif();
}

TEST_F(RegisterOfIdentities, CodesThatNoListHasAreKeptByASaveThatDoesNotTouchThemAndALostSubkeyIsTold) {
    const char* codes = "SELECT Nif_Sg, Nif_Prov, Nif_Pais FROM KXComun.dbo.Nif ORDER BY Nif_Id";
    insert("KXComun.dbo.Nif (Nif_Doc, Nif_ClaveRet, Nif_SubClave)",
           {{"G1", "G", "01"}, {"G2", "G", "02"}, {"G9", "G", "09"}});
    insert("KXComun.dbo.Nif (Nif_TipDoc, Nif_Doc, Nif_Sg, Nif_Prov, Nif_Pais)",
           {{0, "C00000003", "C", "77", "011"}, {0, "D00000004", "C", "Var", "999"}});
    const std::string before = rows(codes);
    onNextScreen([&](Form& form) {
        const auto choose = [&](const char* list, int item) {
            person.hands.choose(form, person.control<ComboBox>(form, list), item);
        };
        const std::string& status = form.statusLine()->Caption;
        enter(form, identity::document, "G9");
        EXPECT_EQ(status, "La subclave de retención 09 cuenta como ninguna: al guardar se quita.");
        enter(form, identity::document, "G2");
        EXPECT_EQ(status, "");
        enter(form, identity::document, "G1");
        EXPECT_NE(status.find("subclave de retención 01"), std::string::npos);
        for (const char* document : {"C00000003", "D00000004"}) {
            enter(form, identity::document, document);
            person.fill(form, identity::name, "Otro nombre");
            pressAndRead(form, identity::save, done);
        }
        EXPECT_EQ(rows(codes), before);
        choose("cboPais", 0);
        choose("cboProvincias", 1);
        pressAndRead(form, identity::save, done);
    });
    maes.jNif();
    EXPECT_TRUE(rows(codes).ends_with("C|77|011|\nC|28|011|\n")) << rows(codes);
}

TEST_F(RegisterOfIdentities, WhatAnotherProgramHasChangedMeanwhileIsNotWrittenOver) {
    onNextScreen([&](Form& form) {
        enter(form, identity::document, "A00000001");
        person.fill(form, identity::name, "Nuestra");
        failing->rival = {"UPDATE KXComun.dbo.Nif SET Nif_Dir = 'Suya' WHERE Nif_Doc = 'A00000001'", {}};
        pressAndRead(form, identity::save,
                     "Otro programa ha cambiado este CIF/NIF. Vuelva a buscarlo para ver cómo está ahora.");
        EXPECT_EQ(person.text(form, identity::name), "Nuestra");
        EXPECT_EQ(entries().find("Nuestra"), std::string::npos);
        enter(form, identity::document, "A00000001");
        EXPECT_EQ(person.text(form, identity::street), "Suya") << "typed again, it is read again";
        for (const char* name : {"Una", "Otra"}) {
            person.fill(form, identity::name, name);
            pressAndRead(form, identity::save, done);
        }
        enter(form, identity::document, "B00000002");
        person.fill(form, identity::name, "Renacida");
        failing->rival = {"DELETE FROM KXComun.dbo.Nif WHERE Nif_Doc = 'B00000002'", {}};
        pressAndRead(form, identity::save,
                     "Otro programa ha eliminado este CIF/NIF. Si lo guarda otra vez, se crea de nuevo.");
        pressAndRead(form, identity::save, done);
    });
    maes.jNif();
    EXPECT_EQ(rows("SELECT Nif_Doc, Nif_Nom FROM KXComun.dbo.Nif"), "A00000001|Otra|\nB00000002|Renacida|\n");
}

TEST_F(RegisterOfIdentities, ADocumentThatAnotherProgramHasJustCreatedIsNotStoredTwice) {
    onNextScreen([&](Form& form) {
        person.answers = {Answer::Yes};
        enter(form, identity::document, "C00000003");
        person.fill(form, identity::name, "Nuestra");
        failing->rival = {"INSERT INTO KXComun.dbo.Nif (Nif_TipDoc, Nif_Doc, Nif_Nom) VALUES (0, 'C00000003', 'Suya')",
                          {}};
        pressAndRead(form, identity::save, "C00000003: acaba de crearse desde otro puesto.");
        EXPECT_EQ(person.text(form, identity::name), "Nuestra");
    });
    maes.jNif();
    EXPECT_EQ(rows("SELECT Nif_Nom FROM KXComun.dbo.Nif WHERE Nif_Doc = 'C00000003'"), "Suya|\n");
}

TEST_F(RegisterOfIdentities, OnlyWhatIsRegisteredAsNieIsAcceptedAsItStands) {
    insert("KXComun.dbo.Nif (Nif_TipDoc, Nif_Doc)", {{2, "X-1234567Ñ"}, {0, "X0A"}, {1, "X1A"}, {3, "X3A"}});
    const auto verified = [&](std::string value, bool inRegister = true) {
        const bool valid = maes.FnVerificarCif(value, inRegister);
        return value + (valid ? " sí" : " no");
    };
    EXPECT_EQ(verified("x-1234567ñ"), "X-1234567Ñ sí");
    EXPECT_EQ(verified("x-1234567ñ", false), "X1234567 no");
    for (const char* other : {"x0a", "x1a", "x3a", "x9a"}) EXPECT_TRUE(verified(other).ends_with(" no")) << other;
    EXPECT_EQ(verified("es-a12345674"), "A12345674 sí");
    maes.MyBd = nullptr;
    EXPECT_EQ(verified("12345678z", false), "12345678Z sí");
    EXPECT_THROW(verified("12345678z"), std::logic_error);
}

}  // namespace
}  // namespace FendaMaestros::testing
