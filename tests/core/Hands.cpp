#include "session/Recordset.h"
#include "tests/support/DesktopTest.h"

namespace FendaMaestros::testing {
namespace {

/// A form whose field warns when it is left, with two buttons under one letter.
class Warning final : public Form {
public:
    explicit Warning(Desktop& desktop) : Form(desktop) {
        add(Field, "Field");
        add(Grid, "Grid");
        add(cmdApagado, "cmdApagado");
        add(cmdEncendido, "cmdEncendido");
        Field.LostFocus = [this] { ask("Aviso", message::Exclamation, ""); };
        Grid.DblClick = [this] { log += "doble "; };
        Grid.HeadClick = [this](int column) { log += std::to_string(column) + " "; };
        cmdApagado.Click = [this] { log += "apagado "; };
        cmdEncendido.Click = [this] { log += "encendido "; };
        cmdApagado.Enabled = false;
        auto rows = std::make_shared<Recordset>(std::vector<std::string>{"Id", "Codigo", "Nombre"});
        for (int cell = 0; cell < 3 * 25; ++cell) rows->appendInteger(cell);
        Grid.bind(rows);
        Grid.Columns[0].Visible = false;
    }
    void onKeyUp(int& code, int) override { released = code; }

    TextBox Field;
    DataGrid Grid;
    CommandButton cmdApagado{"&Uno"}, cmdEncendido{"&Una"};
    std::string log;
    int released = 0;
};

class Hands : public DesktopTest {};

TEST_F(Hands, WhatAMessageInterruptsIsNotDoneAndAnEscapeThatAnswersClosesNothing) {
    Warning screen(desktop);
    onNextScreen([&](Form& form) {
        person.answers = {Answer::Ok};
        person.hands.doubleClickRow(form, screen.Grid, 0);
        EXPECT_EQ(screen.log, "");
        person.hands.doubleClickRow(form, screen.Grid, 0);
        person.hands.key(form, {'U', shift::Alt});
        EXPECT_EQ(screen.log, "doble encendido ");
    });
    screen.show();
}

TEST_F(Hands, KeysMoveThroughAGridAndControlWithADigitClicksAHeader) {
    Warning screen(desktop);
    screen.Field.LostFocus = {};
    onNextScreen([&](Form& form) {
        person.hands.click(form, screen.Grid);
        const auto at = [&](int code) {
            person.hands.key(form, {code, shift::None});
            return screen.Grid.currentRow();
        };
        EXPECT_EQ(at(key::PageDown), 10);
        EXPECT_EQ(at(key::Down), 11);
        EXPECT_EQ(at(key::PageUp), 1);
        EXPECT_EQ(at(key::End), 24);
        EXPECT_EQ(at(key::Down), 24);
        EXPECT_EQ(at(key::Home), 0);
        for (const int digit : {'1', '2', '3', '0'}) person.hands.key(form, {digit, shift::Control});
        EXPECT_EQ(screen.log, "1 2 ");
    });
    screen.show();
}

TEST_F(Hands, LettersAreSmallUnlessShiftIsDown) {
    Warning screen(desktop);
    screen.Field.LostFocus = {};
    onNextScreen([&](Form& form) {
        for (const KeyStroke stroke : {KeyStroke{'A', shift::None},
                                       {'B', shift::Shift},
                                       {'7', shift::None},
                                       {'C', shift::Alt},
                                       {key::Space, shift::None}})
            person.hands.key(form, stroke);
        EXPECT_EQ(screen.Field.Text, "aB7 ");
    });
    screen.show();
}

}  // namespace
}  // namespace FendaMaestros::testing
