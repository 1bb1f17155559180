#include <filesystem>
#include <fstream>
#include <sstream>

#include "tests/session/TemporaryFolder.h"
#include "tests/support/CompanyTest.h"

namespace FendaMaestros::testing {
namespace {

constexpr const char* finished = "Finalizada verificación con incidencias";

/// A chart with a customer's code given three times, the first time to an account with journal and no description, and
/// two codes of another length, one of them with journal.
class ChartVerification : public CompanyTest {
protected:
    ChartVerification() {
        insert("PCta (PCta_Cta, PCta_Des, PCta_Subcuenta, PCta_bActiva)",
               {{"43000001", "", 1, 1},
                {"43000001", " Cliente; \"S.A.\"\nde Lugo ", 1, 1},
                {"43000001", "Otro", 1, 0},
                {"570", "Caja", 1, 1},
                {"5720000011", "Banco", 1, 1},
                {"57200001", "Banco", 1, 1}});
        insert("Apu (Apu_Eje, Apu_Cta, Apu_IdCta)",
               {{2026, "43000001", idOf("")}, {2026, "5720000011", idOf("Banco")}});
    }

    std::int32_t idOf(const std::string& description) {
        return id("SELECT MIN(PCta_Id) FROM PCta WHERE PCta_Des = '" + description + "'");
    }
    std::string everything() { return rows("SELECT * FROM PCta ORDER BY PCta_Id") + rows("SELECT * FROM Apu"); }
    std::string accounts() { return rows("SELECT PCta_Cta, PCta_Des FROM PCta ORDER BY PCta_Id"); }

    /// The check of the sub-accounts, on a screen of its own.
    void check(const ScriptedPerson::Visit& visit) {
        onNextScreen([&](Form& form) {
            person.hands.choose(form, ScriptedPerson::control<ComboBox>(form, "cboPlan"), 1);
            visit(form);
        });
        maes.jshowPGCVerificacion();
    }
    /// The check, with Yes to the deletion; gives what the status line says then.
    std::string deleteUnused() {
        std::string told;
        check([&](Form& form) {
            person.answers = {Answer::Yes, Answer::Ok};
            person.press(form, "cmdInicio");
            told = ScriptedPerson::control<Label>(form, "lblEstado").Caption;
        });
        return told;
    }
};

TEST_F(ChartVerification, WhatIsUnusedIsDeletedAndItsDescriptionGoesToTheAccountThatStaysWithoutOne) {
    EXPECT_EQ(deleteUnused(), "3 cuentas eliminadas");
    EXPECT_EQ(accounts(), "43000001|Cliente; \"S.A.\"\nde Lugo|\n5720000011|Banco|\n57200001|Banco|\n");
}

TEST_F(ChartVerification, AFailureAtAnyStatementDeletesNothingAndLeavesTheScreenAtWork) {
    const std::string before = everything();
    check([&](Form& form) {
        const auto& list = ScriptedPerson::control<ListView>(form, "ListView1");
        for (int statement = 1;; ++statement) {
            ASSERT_LT(statement, 20);
            failing->failAt(statement);
            person.answers = {Answer::Ok};
            if (statement > 1) person.answers.push_front(Answer::Yes);
            person.press(form, "cmdInicio");
            failing->failAt(0);
            EXPECT_TRUE(form.Enabled);
            EXPECT_EQ(desktop.pointer(), 0);
            EXPECT_FALSE(hasOpenTransaction(*memory)) << statement;
            EXPECT_EQ(list.Rows.size(), statement > 1 ? 5U : 0U) << "the check itself, or the deletion";
            EXPECT_EQ(person.messages.back().title, "Verificación Plan de Cuentas");
            if (person.messages.back().text == finished) break;
            EXPECT_EQ(person.messages.back().text, "Fallo provocado");
            ASSERT_EQ(everything(), before) << "statement " << statement;
        }
    });
    EXPECT_NE(everything(), before);
}

TEST_F(ChartVerification, AFailureOfThePlansLookUpsKeepsWhatWasFoundUntilThen) {
    onNextScreen([&](Form& form) {
        const auto& list = ScriptedPerson::control<ListView>(form, "ListView1");
        failing->failAt(10);
        person.answers = {Answer::Ok};
        person.press(form, "cmdInicio");
        EXPECT_EQ(list.Rows.size(), 2U) << "the chart, and three look-ups for each account";
        EXPECT_TRUE(form.Enabled);
        failing->failAt(0);
        person.press(form, "cmdInicio");
        EXPECT_EQ(list.Rows.size(), 5U) << "all active ones, for there is no plan";
    });
    maes.jshowPGCVerificacion();
    EXPECT_EQ(person.messages.back().text, "Fallo provocado");
}

TEST_F(ChartVerification, WhatAnotherProgramHasPostedToChangedOrDeletedMeanwhileStaysAndIsTold) {
    const std::string before = accounts();
    struct Case {
        Statement rival;
        const char *told, *cash;
    };
    for (const auto& [rival, told, cash] :
         std::vector<Case>{{{"INSERT INTO Apu (Apu_Cta, Apu_IdCta) VALUES ('570', ?)", {idOf("Caja")}},
                            "2 cuentas eliminadas, 1 no: la ha cambiado otro programa",
                            "570|Caja|\n"},
                           {{"UPDATE PCta SET PCta_Des = 'Suya' WHERE PCta_Cta = '570'", {}},
                            "2 cuentas eliminadas, 1 no: la ha cambiado otro programa",
                            "570|Suya|\n"},
                           {{"UPDATE PCta SET PCta_Cta = '57000001' WHERE PCta_Cta = '570'", {}},
                            "2 cuentas eliminadas, 1 no: la ha cambiado otro programa",
                            "57000001|Caja|\n"},
                           {{"DELETE FROM PCta WHERE PCta_Cta = '570'", {}},
                            "2 cuentas eliminadas, 1 no: la ha cambiado otro programa",
                            ""}}) {
        SCOPED_TRACE(rival.sql);
        memory->BeginTrans();
        failing->rival = rival;
        EXPECT_EQ(deleteUnused(), told);
        EXPECT_EQ(rows("SELECT PCta_Cta, PCta_Des FROM PCta WHERE PCta_Cta LIKE '570%'"), cash);
        memory->RollbackTrans();
        ASSERT_EQ(accounts(), before);
    }
}

TEST_F(ChartVerification, ADescriptionThatAnotherProgramHasJustGivenIsNotWrittenOver) {
    insert("PCta (PCta_Cta, PCta_Des, PCta_Subcuenta, PCta_bActiva)", {{"7", " ", 1, 1}, {"7", "Nuestra", 1, 1}});
    failing->rival = {"UPDATE PCta SET PCta_Des = 'Suya' WHERE PCta_Cta = '7' AND PCta_Des = ' '", {}};
    EXPECT_EQ(deleteUnused(), "4 cuentas eliminadas, 1 no: la ha cambiado otro programa");
    EXPECT_EQ(rows("SELECT PCta_Des FROM PCta WHERE PCta_Cta = '7'"), "Suya|\n");
}

TEST_F(ChartVerification, WhatIsDeletedIsKeptInAFileAndWithoutThatNothingIsDeleted) {
    const tests::TemporaryFolder folder;
    SesionSql withFiles(failing, parameters(2026), folder.path().string());
    maes.MyBd = &withFiles;
    const auto copies = folder.path() / "eliminadas";

    const std::string before = everything();
    std::ofstream(copies) << "in the way";
    check([&](Form& form) {
        person.answers = {Answer::Yes, Answer::Ok};
        person.press(form, "cmdInicio");
        EXPECT_TRUE(form.Enabled);
    });
    EXPECT_TRUE(person.messages.back().text.starts_with("No se puede escribir " + copies.string()))
        << person.messages.back().text;
    EXPECT_EQ(everything(), before);

    std::filesystem::remove(copies);
    const std::string told = deleteUnused();
    ASSERT_TRUE(told.starts_with("3 cuentas eliminadas. Copia en " + copies.string())) << told;
    const std::filesystem::path file = told.substr(told.find('/'));
    using std::filesystem::perms;
    EXPECT_EQ(std::filesystem::status(copies).permissions(), perms::owner_all);
    EXPECT_EQ(std::filesystem::status(file).permissions(), perms::owner_read | perms::owner_write);
    std::ostringstream copy;
    copy << std::ifstream(file, std::ios::binary).rdbuf();
    const std::string text = copy.str();
    EXPECT_TRUE(text.starts_with("PCta_Id;PCta_Cta;PCta_Des;")) << text;
    EXPECT_NE(text.find(";43000001;\" Cliente; \"\"S.A.\"\"\nde Lugo \";"), std::string::npos) << text;
    EXPECT_NE(text.find(";570;Caja;"), std::string::npos);
    EXPECT_EQ(text.find("5720000011"), std::string::npos) << "what stays is not copied";
}

}  // namespace
}  // namespace FendaMaestros::testing
