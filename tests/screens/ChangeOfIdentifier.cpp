#include "tests/support/CompanyTest.h"

namespace FendaMaestros::testing {
namespace {

constexpr const char* done = "Proceso finalizado satisfactoriamente";
constexpr const char *fresh = "txtFields(6)", *invoices = "Check1", *save = "cmdSalvar";

/// A person and an organisation, with invoices of two years each.
class ChangeOfIdentifier : public CompanyTest {
protected:
    ChangeOfIdentifier() {
        insert("KXComun.dbo.Nif (Nif_TipDoc, Nif_Doc, Nif_Nom, Nif_Ape1, Nif_Ape2)",
               {{1, "12345678Z", "JUAN", "GARCIA", "LOPEZ"}, {0, "A12345674", "SOCIEDAD", Variant(), Variant()}});
        for (const char* document : {"12345678Z", "A12345674"})
            insert("Fac (Fac_Doc, Fac_Rsocial, Fac_Fecha)", {{document, "Antes", "2025-12-31"},
                                                             {document, "Antes", "2026-01-01"},
                                                             {document, "Antes", "2026-12-31"}});
    }

    std::string everything() { return rows("SELECT * FROM KXComun.dbo.Nif") + rows("SELECT * FROM Fac"); }
    std::string stored(const std::string& document) {
        return rows("SELECT Fac_Rsocial, Fac_Fecha FROM Fac WHERE Fac_Doc = '" + document + "' ORDER BY Fac_Fecha");
    }
    /// The screen, opened from an entry of the register; gives what the register's status line says in the end.
    std::string change(const char* document, const ScriptedPerson::Visit& visit) {
        std::string told;
        onNextScreen([&](Form& form) {
            enter(form, identity::document, document);
            onNextScreen(visit);
            person.press(form, "cmdSustituir");
            told = ScriptedPerson::control<Label>(form, "lblEstado").Caption;
        });
        maes.jNif();
        return told;
    }
};

TEST_F(ChangeOfIdentifier, AFailureAtAnyStatementLeavesTheRegisterTheInvoicesAndTheScreenAsTheyWere) {
    const std::string before = everything();
    const std::string told = change("12345678Z", [&](Form& form) {
        person.fill(form, fresh, "X1234567L");
        person.press(form, invoices);
        for (int statement = 1;; ++statement) {
            ASSERT_LT(statement, 20);
            failing->failAt(statement);
            person.answers = {Answer::Yes, Answer::Ok};
            person.press(form, save);
            failing->failAt(0);
            EXPECT_FALSE(hasOpenTransaction(*memory)) << statement;
            EXPECT_EQ(desktop.pointer(), 0);
            if (person.messages.back().text == done) break;
            EXPECT_EQ(person.messages.back().text, "Fallo provocado");
            EXPECT_TRUE(form.isOpen());
            EXPECT_EQ(person.text(form, fresh), "X1234567L");
            ASSERT_EQ(everything(), before) << "statement " << statement;
        }
        EXPECT_FALSE(form.isOpen());
    });
    EXPECT_EQ(told, "Cambiadas 2 facturas de 2026");
    EXPECT_EQ(rows("SELECT Nif_Doc, Nif_Nom FROM KXComun.dbo.Nif ORDER BY Nif_Id"),
              "X1234567L|JUAN|\nA12345674|SOCIEDAD|\n");
    EXPECT_EQ(stored("X1234567L"), "JUAN GARCIA LOPEZ|2026-01-01|\nJUAN GARCIA LOPEZ|2026-12-31|\n");
    EXPECT_EQ(stored("12345678Z"), "Antes|2025-12-31|\n") << "other years keep what they had";
}

TEST_F(ChangeOfIdentifier, AnIdentifierThatAnotherEntryHasIsToldWhileItIsTypedInWhateverSpelling) {
    constexpr const char* otherSpelling =
        "! A-12345674 ya es de SOCIEDAD, escrito A12345674 · Su forma normal es A12345674";
    change("12345678Z", [&](Form& form) {
        const auto told = [&](const char* typed) {
            person.fill(form, fresh, typed);
            return form.statusLine()->shown();
        };
        EXPECT_EQ(told("a-12345674"), otherSpelling);
        EXPECT_EQ(told("A12345674"), "! A12345674 es de SOCIEDAD · A12345674: CIF de una sociedad anónima");
        EXPECT_EQ(told("12345678-z"), "Su forma normal es 12345678Z") << "its own";
        person.fill(form, fresh, "a-12345674");
        person.hands.key(form, {key::Tab, shift::None});
        EXPECT_EQ(form.statusLine()->shown(), otherSpelling);
    });
}

TEST_F(ChangeOfIdentifier, TheNameOfTheInvoicesIsTheEntrysInTheOrderOfTheCompany) {
    ParametrosEmpresa surnamesFirst = parameters(2026);
    surnamesFirst.set("PAR_ORCONTANOM", 1);
    SesionSql otherOrder(failing, surnamesFirst);
    struct Case {
        SesionBd* session;
        const char *document, *name;
    };
    for (const auto& [company, document, name] :
         {Case{&session, "12345678Z", "JUAN GARCIA LOPEZ"}, Case{&otherOrder, "12345678Z", "GARCIA LOPEZ JUAN"},
          Case{&otherOrder, "A12345674", "SOCIEDAD"}}) {
        maes.MyBd = company;
        change(document, [&](Form& form) {
            person.press(form, invoices);
            person.answers = {Answer::Yes, Answer::Ok};
            person.press(form, save);
        });
        EXPECT_EQ(stored(document),
                  std::string("Antes|2025-12-31|\n") + name + "|2026-01-01|\n" + name + "|2026-12-31|\n");
    }
}

TEST_F(ChangeOfIdentifier, AnEntryThatAnotherProgramHasDeletedOrChangedMeanwhileIsNotWritten) {
    for (const auto& [rival, told] :
         {std::pair{"UPDATE KXComun.dbo.Nif SET Nif_Doc = 'Suyo' WHERE Nif_Id = 1",
                    "Otro programa ha cambiado este CIF/NIF. Salga y vuelva a abrirlo "
                    "para ver cómo está."},
          std::pair{"DELETE FROM KXComun.dbo.Nif WHERE Nif_Id = 2", "Otro programa ha eliminado este CIF/NIF."}}) {
        const std::string before = rows("SELECT * FROM Fac");
        change(rival[0] == 'U' ? "12345678Z" : "A12345674", [&](Form& form) {
            person.fill(form, fresh, "Nuestro");
            person.press(form, invoices);
            failing->rival = {rival, {}};
            person.answers = {Answer::Yes, Answer::Ok};
            person.press(form, save);
            EXPECT_EQ(person.messages.back().text, told);
            EXPECT_TRUE(form.isOpen());
        });
        EXPECT_EQ(rows("SELECT * FROM Fac"), before);
        EXPECT_EQ(rows("SELECT Nif_Id FROM KXComun.dbo.Nif WHERE Nif_Doc = 'Nuestro'"), "");
    }
}

TEST_F(ChangeOfIdentifier, WithoutACurrentIdentifierNoInvoicesAreLookedFor) {
    insert("Fac (Fac_Doc, Fac_Rsocial, Fac_Fecha)", {{"", "De nadie", "2026-05-05"}});
    const std::string before = everything();
    change("A12345674", [&](Form& form) {
        person.fill(form, identity::document, "");
        person.press(form, invoices);
        person.answers = {Answer::Yes, Answer::Ok};
        person.press(form, save);
        EXPECT_EQ(person.messages.back().text, "No hay ningún Cif/Nif actual: sus facturas no se pueden buscar.");
    });
    EXPECT_EQ(everything(), before);
}

TEST_F(ChangeOfIdentifier, ARegisterThatCannotBeReadLeavesTheListingShownAndAnOutputThatFailsIsTold) {
    onNextScreen([&](Form& form) {
        onNextScreen([&](Form& listing) {
            const auto& grid = ScriptedPerson::control<DataGrid>(listing, "dbgNif");
            person.press(listing, "cmdIniciar");
            EXPECT_EQ(grid.rowCount(), 2);
            failing->failAt(1);
            pressAndRead(listing, "cmdIniciar", "Fallo provocado");
            failing->failAt(1);
            person.answers = {Answer::Ok};
            person.hands.clickHeader(listing, ScriptedPerson::control<DataGrid>(listing, "dbgNif"), 2);
            failing->failAt(0);
            EXPECT_EQ(grid.rowCount(), 2);
            EXPECT_EQ(grid.Columns[1].Caption, "Razón Social/Nombre »") << "in the order that it was read in";
            EXPECT_TRUE(listing.Enabled);
            person.hands.click(listing, ScriptedPerson::control(listing, "optSalida(1)"));
            person.answers = {Answer::Ok};
            person.press(listing, "cmdIniciar");
            EXPECT_TRUE(listing.isOpen()) << "there is no printer";
        });
        person.press(form, "cmdInforme");
    });
    maes.jNif();
}

}  // namespace
}  // namespace FendaMaestros::testing
