#pragma once

// What every desktop does alike. Define FendaMaestros::contract::Platform before: its desktop(Operator&) and gestures()
// give the desktop under test and the hands on it.

#include <gtest/gtest.h>

#include "tests/support/ContractForm.h"

namespace FendaMaestros::contract {

template <class Tested>
class ToolkitContract : public testing::Test {
protected:
    /// Shows the form and does the scene on it; forms shown meanwhile get the scenes that follow.
    void perform(Person::Scene scene) {
        person.scenes.push_front(std::move(scene));
        screen.show();
    }
    void type(std::string_view text) { hands->type(screen, text); }
    void press(int code, int shift = shift::None) { hands->key(screen, {code, shift}); }
    void click(Control& control) { hands->click(screen, control); }
    void bindRows(int count) {
        rows = std::make_shared<Rows>(count);
        screen.Lista.bind(rows);
        rows->moves.clear();
    }

    Person person;
    std::unique_ptr<Desktop> desktop = Tested::desktop(person);
    std::unique_ptr<Gestures> hands = Tested::gestures();
    Ficha screen{*desktop};
    std::shared_ptr<Rows> rows;
};

TYPED_TEST_SUITE(ToolkitContract, testing::Types<Platform>);

using Log = std::vector<std::string>;
inline constexpr Reply okByEnter{Answer::Ok, key::Enter};

TYPED_TEST(ToolkitContract, tab_walks_in_order_and_skips_what_is_disabled_or_hidden) {
    auto& form = this->screen;
    form.Tipo.Enabled = false;
    form.Activo.Visible = false;
    std::vector<Control*> visited;
    this->perform([&](Form&) {
        for (int step = 0; step < 6; ++step) {
            visited.push_back(form.activeControl());
            this->press(key::Tab);
        }
        this->press(key::Tab, shift::Shift);
        visited.push_back(form.activeControl());
    });
    EXPECT_EQ(visited, (std::vector<Control*>{&form.Codigo, &form.Nombre, &form.Lista, &form.cmdGuardar, &form.cmdSalir,
                                              &form.Codigo, &form.Codigo}));
}

TYPED_TEST(ToolkitContract, enter_moves_on_and_presses_no_command) {
    auto& form = this->screen;
    this->perform([&](Form&) {
        this->press(key::Enter);
        EXPECT_EQ(form.activeControl(), &form.Nombre);
        this->click(form.Activo);
        this->press(key::Enter);
        EXPECT_EQ(form.activeControl(), &form.Lista);
        this->press(key::Enter);
        this->press(key::Enter);
        EXPECT_EQ(form.activeControl(), &form.cmdSalir);
        EXPECT_TRUE(form.isOpen());
    });
    EXPECT_EQ(form.log, (Log{"entra Codigo", "sale Codigo", "entra Nombre", "sale Nombre"}));
}

TYPED_TEST(ToolkitContract, esc_leaves_while_typing_and_so_does_the_close_box) {
    this->perform([&](Form&) {
        this->type("12");
        this->press(key::Escape);
        EXPECT_FALSE(this->screen.isOpen());
    });
    EXPECT_TRUE(this->person.messages.empty());
    this->perform([&](Form& shown) {
        this->hands->close(shown);
        EXPECT_FALSE(shown.isOpen());
    });
}

TYPED_TEST(ToolkitContract, enter_that_dismisses_a_message_moves_the_focus_only_without_the_mark) {
    auto& form = this->screen;
    for (const bool marked : {true, false}) {
        form.cmdGuardar.Click = [&] {
            form.warn(marked);
            form.setFocus(form.Codigo);
        };
        this->person.replies = {okByEnter};
        this->perform([&](Form&) {
            this->click(form.cmdGuardar);
            EXPECT_EQ(form.activeControl(), marked ? &form.Codigo : &form.Nombre);
            EXPECT_EQ(form.Tag, "");
            this->press(key::Enter);
            EXPECT_EQ(form.activeControl(), marked ? static_cast<Control*>(&form.Nombre) : &form.Tipo);
        });
    }
}

TYPED_TEST(ToolkitContract, questions_give_the_answer_and_the_mouse_releases_no_key) {
    auto& form = this->screen;
    std::vector<Answer> answers;
    form.cmdGuardar.Click = [&] { answers.push_back(form.ask("¿Seguro?", 292, "")); };
    this->person.replies = {{Answer::Yes, 'S'}, {Answer::No, key::Enter}, {Answer::Yes, 0}};
    this->perform([&](Form&) {
        this->click(form.cmdGuardar);
        EXPECT_EQ(form.activeControl(), &form.cmdGuardar);
        this->click(form.cmdGuardar);
        EXPECT_EQ(form.activeControl(), &form.cmdSalir);
        this->click(form.cmdGuardar);
        EXPECT_EQ(form.activeControl(), &form.cmdGuardar);
    });
    EXPECT_EQ(answers, (std::vector{Answer::Yes, Answer::No, Answer::Yes}));
}

TYPED_TEST(ToolkitContract, a_message_on_leaving_a_field_ends_the_gesture_that_left_it) {
    auto& form = this->screen;
    form.Codigo.LostFocus = [&] {
        form.warn(true);
        form.setFocus(form.Codigo);
    };
    this->person.replies = {okByEnter, okByEnter};
    this->perform([&](Form&) {
        this->click(form.cmdGuardar);
        EXPECT_EQ(form.activeControl(), &form.Codigo);
        this->click(form.Nombre);
        EXPECT_EQ(form.activeControl(), &form.Codigo);
    });
    EXPECT_EQ(form.log, (Log{"entra Codigo", "entra Codigo", "entra Codigo"}));
}

TYPED_TEST(ToolkitContract, focus_redirected_while_leaving_enters_only_the_last_place) {
    auto& form = this->screen;
    form.Codigo.LostFocus = [&] { form.setFocus(form.cmdSalir); };
    this->perform([&](Form&) {
        this->press(key::Tab);
        EXPECT_EQ(form.activeControl(), &form.cmdSalir);
    });
    EXPECT_EQ(form.log, Log{"entra Codigo"});
}

TYPED_TEST(ToolkitContract, disabled_controls_refuse_every_gesture) {
    auto& form = this->screen;
    this->bindRows(3);
    for (Control* control :
         std::vector<Control*>{&form.fraDatos, &form.Tipo, &form.Activo, &form.Lista, &form.cmdGuardar})
        control->Enabled = false;
    this->perform([&](Form& shown) {
        this->click(form.Nombre);
        this->type("x");
        this->click(form.Activo);
        this->click(form.cmdGuardar);
        this->hands->choose(shown, form.Tipo, 1);
        this->hands->clickRow(shown, form.Lista, 2);
        EXPECT_EQ(form.activeControl(), &form.cmdSalir);
    });
    EXPECT_EQ(form.log, Log());
    EXPECT_EQ(form.Nombre.Text, "");
    EXPECT_FALSE(form.Activo.Value());
    EXPECT_EQ(this->rows->currentRow(), 0);
}

TYPED_TEST(ToolkitContract, what_a_handler_disables_is_left_at_once) {
    auto& form = this->screen;
    form.cmdGuardar.Click = [&] { form.cmdGuardar.Enabled = false; };
    this->perform([&](Form&) {
        this->click(form.cmdGuardar);
        EXPECT_EQ(form.activeControl(), &form.cmdSalir);
    });
}

TYPED_TEST(ToolkitContract, typed_text_passes_the_filter_the_length_and_the_lock) {
    auto& form = this->screen;
    this->perform([&](Form&) {
        this->type("1a2b3c45");
        EXPECT_EQ(form.Codigo.Text, "1234");
        this->press(key::Backspace);
        EXPECT_EQ(form.Codigo.Text, "123");
        this->press(key::Tab);
        this->type("Año \"ñandú\" 😀, 'x'");
        EXPECT_EQ(form.Nombre.Text, "Año \"ñandú\" 😀, 'x'");
        form.Nombre.AllSelected = true;
        this->type("y");
        EXPECT_EQ(form.Nombre.Text, "y");
        form.Nombre.Locked = true;
        this->type("z");
        this->press(key::Backspace);
        EXPECT_EQ(form.Nombre.Text, "y");
        form.Codigo.Text = "777777";
    });
    EXPECT_EQ(form.Codigo.Text, "777777");
}

TYPED_TEST(ToolkitContract, lists_are_chosen_by_mouse_letter_arrow_and_program_with_one_click_each) {
    auto& form = this->screen;
    this->perform([&](Form& shown) {
        form.log.clear();
        this->hands->choose(shown, form.Tipo, 2);
        this->hands->choose(shown, form.Tipo, 2);
        this->type("p");
        this->press(key::Up);
        form.Tipo.setListIndex(2);
    });
    EXPECT_EQ(form.log, (Log{"sale Codigo", "lista Previsto", "lista Previsto", "lista Pasivo", "lista Activo",
                             "lista Previsto"}));
}

TYPED_TEST(ToolkitContract, accelerators_and_space_press_while_a_plain_letter_only_types) {
    auto& form = this->screen;
    this->perform([&](Form&) {
        this->press('G', shift::Alt);
        EXPECT_EQ(form.log.back(), "guarda /");
        this->press(key::Space);
        EXPECT_EQ(form.log.back(), "guarda /");
        this->click(form.Nombre);
        this->type("g");
        EXPECT_EQ(form.log.back(), "entra Nombre");
        this->click(form.Activo);
        this->press(key::Space);
        EXPECT_FALSE(form.Activo.Value());
        this->press('S', shift::Alt);
        EXPECT_FALSE(form.isOpen());
    });
    EXPECT_EQ(std::count(form.log.begin(), form.log.end(), "guarda /"), 2);
}

TYPED_TEST(ToolkitContract, nested_screens_return_one_by_one_to_the_caller) {
    auto& form = this->screen;
    Ficha nested(*this->desktop);
    form.cmdGuardar.Click = [&] {
        nested.show();
        form.Nombre.Text = nested.Nombre.Text;
    };
    this->person.scenes.push_back([&](Form& shown) {
        EXPECT_EQ(this->desktop->activeForm(), &nested);
        this->hands->click(shown, nested.Nombre);
        this->hands->type(shown, "dentro");
        this->hands->key(shown, {key::Escape, shift::None});
    });
    this->perform([&](Form&) {
        this->click(form.cmdGuardar);
        EXPECT_EQ(this->desktop->activeForm(), &form);
        EXPECT_TRUE(form.isOpen());
        EXPECT_EQ(form.activeControl(), &form.cmdGuardar);
    });
    EXPECT_EQ(form.Nombre.Text, "dentro");
    EXPECT_EQ(this->desktop->activeForm(), nullptr);
}

TYPED_TEST(ToolkitContract, what_a_handler_throws_ends_the_screens_and_reaches_who_showed_them) {
    auto& form = this->screen;
    Ficha nested(*this->desktop);
    form.cmdGuardar.Click = [&] { nested.show(); };
    nested.cmdGuardar.Click = [] { throw std::out_of_range("disco lleno"); };
    this->person.scenes.push_back([&](Form& shown) {
        this->hands->click(shown, nested.cmdGuardar);
        ADD_FAILURE() << "the gesture went on";
    });
    EXPECT_THROW(this->perform([&](Form&) { this->click(form.cmdGuardar); }), std::out_of_range);
    EXPECT_FALSE(nested.isOpen());
    EXPECT_FALSE(form.isOpen());
    EXPECT_EQ(this->desktop->activeForm(), nullptr);
    // The screen is as good as before.
    this->perform([&](Form&) { this->click(form.cmdSalir); });
}

TYPED_TEST(ToolkitContract, an_unexpected_message_ends_the_screen) {
    auto& form = this->screen;
    form.cmdGuardar.Click = [&] { form.warn(true); };
    EXPECT_THROW(this->perform([&](Form&) { this->click(form.cmdGuardar); }), std::logic_error);
}

TYPED_TEST(ToolkitContract, grids_of_any_length_move_their_current_row) {
    auto& form = this->screen;
    for (const int count : {0, 1, 100'000}) {
        SCOPED_TRACE(count);
        this->bindRows(count);
        this->perform([&](Form& shown) {
            this->hands->clickRow(shown, form.Lista, count - 1);
            EXPECT_EQ(form.Lista.currentRow(), count - 1);
            EXPECT_EQ(this->rows->moves, count ? std::vector{count - 1} : std::vector<int>());
            this->click(form.Nombre);
            this->hands->clickRow(shown, form.Lista, count);
            EXPECT_EQ(form.Lista.currentRow(), count - 1);
            this->hands->clickHeader(shown, form.Lista, 0);
            this->press(key::Home);
            EXPECT_EQ(form.Lista.currentRow(), count ? 0 : -1);
            this->press(key::Down);
            EXPECT_EQ(form.Lista.currentRow(), count == 100'000 ? 1 : count - 1);
        });
    }
}

TYPED_TEST(ToolkitContract, grids_tell_headers_double_clicks_and_cell_buttons) {
    auto& form = this->screen;
    this->bindRows(50);
    form.Lista.Columns[1].Button = true;
    form.Lista.HeadClick = [&](int column) { form.log.push_back("cabecera " + std::to_string(column)); };
    form.Lista.ButtonClick = [&](int column) { form.log.push_back("boton " + std::to_string(column)); };
    form.Lista.DblClick = [&] { form.log.push_back("doble " + std::to_string(form.Lista.currentRow())); };
    this->perform([&](Form& shown) {
        this->click(form.Lista);
        form.log.clear();
        this->hands->clickHeader(shown, form.Lista, 1);
        this->hands->doubleClickRow(shown, form.Lista, 40);
        this->hands->clickCellButton(shown, form.Lista, 1);
        this->bindRows(60);
        this->hands->clickHeader(shown, form.Lista, 0);
        this->hands->clickRow(shown, form.Lista, 59);
    });
    EXPECT_EQ(form.log, (Log{"cabecera 1", "doble 40", "boton 1", "cabecera 0"}));
    EXPECT_EQ(form.Lista.currentRow(), 59);
}

}  // namespace FendaMaestros::contract
