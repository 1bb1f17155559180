#if defined(FENDA_WITH_SQLITE) && defined(FENDA_WITH_HEADLESS)

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "app/Composition.h"
#include "app/window/frmRenumerar.h"
#include "platform/sqlite/DataFolder.h"
#include "tests/session/TemporaryFolder.h"
#include "tests/support/Company.h"
#include "tests/support/ScriptedPerson.h"

namespace FendaMaestros {

namespace {

/// The window over the demonstration.
class RenumberingWindow : public ::testing::Test {
protected:
    void visit(const testing::ScriptedPerson::Visit& look) {
        person.visits = {look};
        frmRenumerar window;
        window.show();
        changedDigits = window.changedDigits();
    }
    void choose(Form& form, int kind) { person.hands.choose(form, person.control<ComboBox>(form, "cboQue"), kind); }
    void type(Form& form, const char* field, std::string_view typed) {
        person.fill(form, field, typed);
        person.hands.key(form, {key::Tab, shift::None});
    }
    std::string summary(Form& form) { return person.control<Label>(form, "lblResumen").Caption; }
    bool canApply(Form& form) { return person.control<CommandButton>(form, "cmdAplicar").Enabled; }
    std::string read(const std::string& sql) {
        return testing::valuesOf(*companies.open(name)->Conexion()->Execute(sql));
    }

    tests::TemporaryFolder folder;
    sqlite::DataFolder companies{folder.path() / "datos"};
    const std::string name = companies.createDemonstration();
    testing::ScriptedPerson person;
    HeadlessDesktop desktop{person};
    OpenCompany company{desktop, companies.open(name)};
    bool changedDigits = false;
};

TEST_F(RenumberingWindow, NothingIsWrittenBeforeItIsSeenAndWanted) {
    const std::string report = (folder.path() / "informe.txt").string();
    visit([&](Form& form) {
        person.visits.emplace_back([&](Form& search) {
            auto& grid = person.control<DataGrid>(search, "dbgBuscar");
            person.hands.doubleClickRow(search, grid, 0);
        });
        person.hands.click(form, person.control(form, "Text1(0)"));
        person.hands.key(form, {key::F(1), shift::None});
        EXPECT_EQ(person.text(form, "Text1(0)"),
                  read("SELECT MIN(PCta_Cta) FROM PCta WHERE PCta_Subcuenta=1").substr(0, 8));
        type(form, "Text1(0)", "43,5");
        EXPECT_EQ(person.text(form, "Text1(0)") + person.text(form, "Text1(1)"), "43000005Muebles Peñaluenga S.L.");
        type(form, "Text1(2)", "43,6");
        EXPECT_EQ(person.text(form, "Text1(3)"), "de la cuenta 4300 Clientes (euros)");
        person.press(form, "cmdVer");
        EXPECT_TRUE(summary(form).starts_with("No se puede. El código 43000006 lo tiene ya la subcuenta «As"));
        EXPECT_FALSE(canApply(form));
        type(form, "Text1(2)", "43,60");
        person.press(form, "cmdVer");
        EXPECT_TRUE(canApply(form));
        EXPECT_EQ(person.control<DataGrid>(form, "dbg").cellText(0, 1), "43000060");
        type(form, "Text1(2)", "43,61");
        EXPECT_FALSE(canApply(form));
        person.press(form, "cmdVer");
        person.answers = {Answer::No, Answer::Yes};
        person.press(form, "cmdAplicar");
        EXPECT_EQ(read("SELECT COUNT(*) FROM Apu WHERE Apu_Cta='43000005'"), "14|\n");
        person.press(form, "cmdAplicar");
        EXPECT_EQ(read("SELECT COUNT(*) FROM Apu WHERE Apu_Cta='43000061'"), "14|\n");
        EXPECT_FALSE(canApply(form));
        person.files = {report};
        person.press(form, "cmdInforme");

        choose(form, 2);
        type(form, "Text1(0)", "43,1");
        type(form, "Text1(4)", "43,2");
        person.press(form, "cmdVer");
        EXPECT_FALSE(canApply(form));
        person.hands.choose(form, person.control<ComboBox>(form, "cboIdentidad"), 1);
        person.press(form, "cmdVer");
        person.answers = {Answer::Yes};
        person.press(form, "cmdAplicar");
        EXPECT_EQ(read("SELECT Nif_Doc FROM PCta INNER JOIN KXComun.dbo.Nif ON Nif_Id=Pcta_IdNif WHERE "
                       "PCta_Cta='43000002'"),
                  "B00000018|\n");
        person.escape(form);
    });
    EXPECT_FALSE(changedDigits);
    std::ostringstream text;
    text << std::ifstream(report).rdbuf();
    EXPECT_NE(text.str().find("Se ha hecho:\n\nSubcuenta 43000005 a 43000061\n"), std::string::npos) << text.str();
}

TEST_F(RenumberingWindow, WithOtherDigitsTheCompanyIsToBeOpenedAnew) {
    visit([&](Form& form) {
        choose(form, 1);
        type(form, "Text1(6)", "x");
        person.answers = {Answer::Ok};
        person.press(form, "cmdVer");
        EXPECT_FALSE(canApply(form));
        type(form, "Text1(6)", "10");
        person.press(form, "cmdVer");
        EXPECT_EQ(person.control<DataGrid>(form, "dbg").rowCount(), 48);

        // Somebody has been there in between.
        companies.open(name)->Conexion()->run({"INSERT INTO Apu (Apu_Cta) VALUES ('43000001')", {}});
        person.answers = {Answer::Yes, Answer::Ok};
        person.press(form, "cmdAplicar");
        EXPECT_NE(person.messages.back().text.find("Otro programa ha cambiado"), std::string::npos);
        EXPECT_FALSE(canApply(form));
        person.press(form, "cmdVer");
        person.answers = {Answer::Yes};
        person.press(form, "cmdAplicar");
        EXPECT_FALSE(person.control<CommandButton>(form, "cmdVer").Enabled);
        person.escape(form);
    });
    EXPECT_TRUE(changedDigits);
    EXPECT_EQ(companies.open(name)->Parametros().Item("Par_CtaNum").Value.text(), "10");
}

}  // namespace

}  // namespace FendaMaestros

#endif
