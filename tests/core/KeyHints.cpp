#include "toolkit/KeyHints.h"

#include "tests/support/DesktopTest.h"

namespace FendaMaestros::testing {
namespace {

/// It searches in one field on two keys, in another on one of them and on a third, in the last one not at all.
class Searching final : public Form {
public:
    explicit Searching(Desktop& desktop) : Form(desktop) {
        Caption = "Ventas";
        add(lblCliente, "lblCliente");
        add(Cliente, "Cliente");
        add(lblPagador, "lblPagador");
        add(Pagador, "Pagador");
        add(Nota, "Nota");
        add(cmdGuardar, "cmdGuardar");
        add(cmdOculto, "cmdOculto");
        layOut(arrange::column({arrange::fields(
            {arrange::field(lblCliente, Cliente), arrange::field(lblPagador, {arrange::plain(Pagador)})})}));
        const KeyHint byCode{{key::F(1)}, "Buscar por código"};
        Cliente.Searches = {byCode, {{key::F(2)}, "Buscar por nombre"}};
        Pagador.Searches = {byCode, {{key::F(4)}, "Buscar por código"}};
        cmdGuardar.Key = {key::F(5), shift::Control};
        cmdOculto.Visible = false;
        explainKey({key::Escape}, "Salir");
        explainKey({key::Escape}, "Dejarlo");
        TypingHints.emplace_back("430, el siguiente");
    }
    void onKeyUp(int& code, int) override { released.push_back(code); }
    using Form::explainKey;

    Label lblCliente{"Cliente (F1 búsqueda)"}, lblPagador{"Paga:"};
    TextBox Cliente, Pagador, Nota;
    CommandButton cmdGuardar{"&Guardar "}, cmdOculto{"&Oculto"};
    std::vector<int> released;
};

class KeyHints : public DesktopTest {
protected:
    Searching screen{desktop};
};

TEST_F(KeyHints, F1SearchesWhereTheFieldOrTheScreenSaysSoAndListsTheKeysElsewhere) {
    onNextScreen([&](Form& form) {
        const auto lists = [&](Control& where, int held) {
            person.hands.click(form, where);
            person.messages.clear();
            person.answers = {Answer::Ok};
            person.hands.key(form, {key::F(1), held});
            const bool listed = person.answers.empty();
            person.answers.clear();
            return listed;
        };
        EXPECT_FALSE(lists(screen.Cliente, shift::None));
        EXPECT_FALSE(lists(screen.Pagador, shift::None));
        EXPECT_EQ(screen.released, (std::vector<int>{key::F(1), key::F(1)}));
        EXPECT_TRUE(lists(screen.Cliente, shift::Shift));
        EXPECT_TRUE(lists(screen.Nota, shift::None));
        EXPECT_EQ(person.messages.back().title, "Ventas");
        screen.explainKey({key::F(1)}, "Buscar en todo");
        EXPECT_FALSE(lists(screen.Nota, shift::None));
    });
    screen.show();
}

TEST_F(KeyHints, TheListNamesEachKeyWhatItDoesAndWhere) {
    EXPECT_EQ(keyList(screen),
              "F1: Buscar por código (Cliente, Paga)\r\n"
              "F2: Buscar por nombre (Cliente)\r\n"
              "F4: Buscar por código (Paga)\r\n"
              "Ctrl+F5, Alt+G: Guardar\r\n"
              "Esc: Dejarlo\r\n"
              "Tab: Ir al campo siguiente; con Mayús, al anterior\r\n"
              "Espacio: Pulsar el botón o marcar la casilla que tiene el foco\r\n"
              "Mayús+F1: Esta lista\r\n"
              "430, el siguiente");
}

TEST_F(KeyHints, TooltipsTellTheKeys) {
    EXPECT_EQ(toolTipOf(screen.Cliente), "Buscar por código (F1)\nBuscar por nombre (F2)");
    EXPECT_EQ(toolTipOf(screen.Pagador), "Buscar por código (F1, F4)");
    EXPECT_EQ(toolTipOf(screen.Nota), "");
    EXPECT_EQ(toolTipOf(screen.cmdGuardar), "Guardar (Ctrl+F5, Alt+G)");
    screen.cmdGuardar.ToolTip = "Guarda la venta";
    EXPECT_EQ(toolTipOf(screen.cmdGuardar), "Guarda la venta (Ctrl+F5, Alt+G)");
    screen.Cliente.ToolTip = "Quién compra";
    EXPECT_EQ(toolTipOf(screen.Cliente), "Quién compra\nBuscar por código (F1)\nBuscar por nombre (F2)");
}

}  // namespace
}  // namespace FendaMaestros::testing
