#include "session/AyudaCampos.h"
#include "tests/support/DesktopTest.h"
#include "tests/support/FakeConexion.h"

namespace FendaMaestros::testing {
namespace {

using Person = ScriptedPerson;

class SearchDialog : public DesktopTest {
protected:
    AyudaCampos help{desktop};
    std::shared_ptr<FakeConexion> connection = std::make_shared<FakeConexion>();

    void SetUp() override {
        help.Conexion = connection;
        connection->rows = std::make_shared<Recordset>(std::vector<std::string>{"Id", "Codigo", "Nombre", "Otro"});
        const char* names[] = {"Peña Núñez SA", "Áridos del Sur", "Sur de Ávila", "Viñas (sur)", "sin letra"};
        for (int row = 0; row < 5; ++row) {
            connection->rows->appendInteger(70 + row);
            connection->rows->appendInteger(row % 2);
            connection->rows->appendText(names[row]);
            connection->rows->appendNull();
        }
    }

    std::string search(Person::Visit visit, const char* column = "NOMBRE") {
        person.visits.push_back(std::move(visit));
        std::string result = "old";
        help.Buscar("SELECT ...", column, "Código", "Razón", "Buscar por nombre", 900, 7000, 0, result);
        return result;
    }
    static std::string ids(Form& form) {
        const auto& grid = Person::control<DataGrid>(form, "dbgBuscar");
        std::string all;
        for (int row = 0; row < grid.rowCount(); ++row) all += grid.source()->cell(row, 0).text() + " ";
        return all;
    }
    std::string idsFor(Form& form, const char* typed) {
        Person::control<TextBox>(form, "txtBuscar").AllSelected = true;
        person.hands.type(form, typed);
        return ids(form);
    }
};

TEST_F(SearchDialog, OpensOnTheFirstOfAllRows) {
    const std::string result = search([&](Form& form) {
        EXPECT_EQ(form.Caption, "Buscar por nombre");
        EXPECT_EQ(form.activeControl()->Name, "txtBuscar");
        EXPECT_EQ(Person::control<Label>(form, "lblCuenta").Caption, "5 de 5");
        const auto& grid = Person::control<DataGrid>(form, "dbgBuscar");
        ASSERT_EQ(grid.Columns.size(), 2U);
        EXPECT_EQ(grid.Columns[1].Caption, "Razón");
        EXPECT_EQ(grid.Columns[1].Width, 7000);
        EXPECT_EQ(grid.cellText(1, 1), "Áridos del Sur");
        form.keyUp({key::Enter, shift::None});
        EXPECT_TRUE(form.isOpen()) << "the release of a key pressed elsewhere";
        person.enter(form);
    });
    EXPECT_EQ(result,
              "70\x01"
              "0\x01"
              "Peña Núñez SA\x01");
    EXPECT_EQ(AyudaCampos::chosenId(result), 70);
    EXPECT_EQ(connection->log, std::vector<std::string>{"SELECT ..."});
}

TEST_F(SearchDialog, NarrowsToRowsWithEveryWordBeginningsFirst) {
    search([&](Form& form) {
        EXPECT_EQ(idsFor(form, "SÚR"), "72 71 73 ");
        EXPECT_EQ(Person::control<Label>(form, "lblCuenta").Caption, "3 de 5");
        person.hands.type(form, " a");
        EXPECT_EQ(ids(form), "71 72 73 ") << "where nothing begins so, in the order of the read";
        person.hands.type(form, "vil");
        EXPECT_EQ(ids(form), "72 ");
        person.hands.key(form, {key::Backspace, shift::None});
        person.hands.key(form, {key::Backspace, shift::None});
        person.hands.key(form, {key::Backspace, shift::None});
        EXPECT_EQ(ids(form), "71 72 73 ") << "a shorter text looks among all rows again";
        EXPECT_EQ(idsFor(form, "nun pena"), "70 ");
        EXPECT_EQ(idsFor(form, "(SUR"), "73 ");
        EXPECT_EQ(idsFor(form, "  "), "70 71 72 73 74 ");
        EXPECT_EQ(idsFor(form, "%"), "");
        EXPECT_FALSE(Person::control(form, "cmdAceptar").Enabled);
        person.enter(form);
        EXPECT_TRUE(form.isOpen()) << "nothing to choose";
    });
    search([&](Form& form) { EXPECT_EQ(idsFor(form, "1"), "71 73 "); }, "Codigo");
    search([&](Form& form) { EXPECT_EQ(idsFor(form, "1"), "71 73 "); }, "No such column");
}

TEST_F(SearchDialog, SaysInWordsThatNothingIsFoundAndShowsWhatIsOutOfUseQuietly) {
    help.Inactiva = [](const Recordset& rows, int row) { return rows.cell(row, 0).integer() == 72; };
    search([&](Form& form) {
        const auto& grid = Person::control<DataGrid>(form, "dbgBuscar");
        EXPECT_TRUE(grid.isInactive(2) && !grid.isInactive(0));
        EXPECT_EQ(idsFor(form, "sur"), "72 71 73 ");
        EXPECT_TRUE(grid.isInactive(0) && !grid.isInactive(2)) << "wherever the row stands";
        EXPECT_EQ(idsFor(form, " norte "), "");
        EXPECT_EQ(Person::control<Label>(form, "lblCuenta").Caption, "Nada coincide con «norte»");
        person.escape(form);
    });
    connection->rows = std::make_shared<Recordset>(std::vector<std::string>{"Id", "Codigo", "Nombre"});
    search([&](Form& form) {
        EXPECT_EQ(Person::control<Label>(form, "lblCuenta").Caption, "No hay nada que buscar: la lista está vacía");
        person.escape(form);
    });
}

TEST_F(SearchDialog, ArrowsMoveWhileTypingGoesOn) {
    const std::string result = search([&](Form& form) {
        const auto& grid = Person::control<DataGrid>(form, "dbgBuscar");
        person.hands.key(form, {key::PageDown, shift::None});
        EXPECT_EQ(grid.currentRow(), 4);
        person.hands.key(form, {key::PageUp, shift::None});
        EXPECT_EQ(grid.currentRow(), 0);
        person.hands.type(form, "sur");
        EXPECT_EQ(grid.currentRow(), 0) << "narrowing goes back to the first row";
        person.hands.key(form, {key::Up, shift::None});
        person.hands.key(form, {key::Down, shift::None});
        EXPECT_EQ(Person::text(form, "txtBuscar"), "sur");
        EXPECT_EQ(form.activeControl()->Name, "txtBuscar");
        person.press(form, "cmdAceptar");
    });
    EXPECT_EQ(AyudaCampos::chosenId(result), 71);
}

TEST_F(SearchDialog, LeavesWithNothingUnlessARowIsChosen) {
    EXPECT_EQ(search([&](Form& form) { person.escape(form); }), "");
    EXPECT_EQ(search([&](Form& form) { person.press(form, "cmdSalir"); }), "");
    EXPECT_EQ(search([&](Form& form) { person.hands.close(form); }), "");
    EXPECT_EQ(search([&](Form& form) {
                  person.hands.key(form, {key::Tab, shift::Shift});
                  ASSERT_EQ(form.activeControl()->Name, "cmdSalir");
                  person.enter(form);
              }),
              "");
    EXPECT_EQ(AyudaCampos::chosenId(search([&](Form& form) {
                  person.hands.doubleClickRow(form, Person::control<DataGrid>(form, "dbgBuscar"), 0);
              })),
              70);
}

TEST(SearchResult, OfTwoCharactersIsNoChoice) {
    EXPECT_EQ(AyudaCampos::chosenId(""), 0);
    EXPECT_EQ(AyudaCampos::chosenId("7\x01"), 0);
    EXPECT_EQ(AyudaCampos::chosenId("7\x01\x01"), 7);
    EXPECT_EQ(AyudaCampos::chosenId("1234567\x01x"), 1234567);
    EXPECT_EQ(AyudaCampos::chosenId("Ávila\x01"
                                    "05001"),
              0);
}

}  // namespace
}  // namespace FendaMaestros::testing
