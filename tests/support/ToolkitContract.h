#pragma once

// What every desktop does alike. Define FendaMaestros::contract::Platform before: its desktop(Operator&) and gestures()
// give the desktop under test and the hands on it, and seen(Form&, ...) what a person sees of a control.

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
    /// What a person sees: the text of a control, whether a box is ticked, the row marked in a table or, with row and
    /// column, the text of a cell.
    template <class... Args>
    auto seen(Args&&... args) {
        return Tested::seen(screen, args...);
    }
    void fillList(int count) {
        screen.Movimientos.Columns.resize(2);
        screen.Movimientos.Rows.clear();
        for (int row = 0; row < count; ++row)
            screen.Movimientos.Rows.push_back({{std::to_string(row + 1), "Apunte " + std::to_string(row)}, {}});
    }
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
    form.cmdGuardar.Click = [&] { answers.push_back(form.desktop().ask({"¿Seguro?", 292, ""}).answer); };
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
        EXPECT_EQ(this->seen(form.Codigo), "1234");
        this->press(key::Backspace);
        EXPECT_EQ(form.Codigo.Text, "123");
        this->press(key::Tab);
        this->type("Año \"ñandú\" 😀, 'x'");
        EXPECT_EQ(form.Nombre.Text, "Año \"ñandú\" 😀, 'x'");
        EXPECT_EQ(this->seen(form.Nombre), form.Nombre.Text);
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
        EXPECT_EQ(this->seen(form.Tipo), "Pasivo");
        this->press(key::Up);
        EXPECT_EQ(this->seen(form.Tipo), "Activo");
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
        EXPECT_TRUE(this->seen(form.Activo));
        this->press(key::Space);
        EXPECT_FALSE(form.Activo.Value());
        EXPECT_FALSE(this->seen(form.Activo));
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

TYPED_TEST(ToolkitContract, rows_are_chosen_alike_in_grids_and_lists) {
    auto& form = this->screen;
    this->bindRows(30);
    this->fillList(30);
    this->perform([&](Form& shown) {
        for (Table* const table : {static_cast<Table*>(&form.Lista), static_cast<Table*>(&form.Movimientos)}) {
            SCOPED_TRACE(table->Name);
            const auto expectRow = [&](int row) {
                EXPECT_EQ(table->currentRow(), row);
                EXPECT_EQ(this->seen(*table), row);
            };
            this->hands->clickRow(shown, *table, 3);
            EXPECT_EQ(form.activeControl(), table);
            expectRow(3);
            this->press(key::Down);
            expectRow(4);
            this->press(key::PageDown);
            expectRow(14);
            this->press(key::End);
            this->press(key::Down);
            expectRow(29);
            this->press(key::Home);
            expectRow(0);
            this->hands->clickRow(shown, *table, 30);
            expectRow(0);
            table->Enabled = false;
            this->hands->clickRow(shown, *table, 7);
            expectRow(0);
        }
        EXPECT_EQ(this->seen(form.Lista, 29, 0), "30");
        EXPECT_EQ(this->seen(form.Movimientos, 29, 1), "Apunte 29");
        form.Movimientos.Rows[4].Texts.pop_back();
        EXPECT_EQ(this->seen(form.Movimientos, 4, 1), "");
    });
}

TYPED_TEST(ToolkitContract, a_status_line_says_its_text_until_something_is_changed) {
    auto& form = this->screen;
    this->bindRows(5);
    this->fillList(5);
    form.Lista.Columns[1].Button = true;
    form.cmdGuardar.Click = [&] { form.lblEstado.Caption = "Guardado"; };
    this->perform([&](Form& shown) {
        const auto leaves = [&](const char* gesture, const std::string& text, const std::function<void()>& make) {
            SCOPED_TRACE(gesture);
            this->click(form.cmdGuardar);
            EXPECT_EQ(this->seen(form.lblEstado), "Guardado");
            make();
            EXPECT_EQ(this->seen(form.lblEstado), text);
        };
        leaves("focus", "Guardado", [&] { this->click(form.Nombre); });
        leaves("Tab", "Guardado", [&] { this->press(key::Tab, shift::Shift); });
        leaves("Enter", "Guardado", [&] { this->press(key::Enter); });
        leaves("another key", "Guardado", [&] { this->press(key::F(5)); });
        leaves("nothing to press", "Guardado", [&] { this->press('Q', shift::Alt); });
        form.Nombre.Locked = true;
        leaves("locked", "Guardado", [&] {
            this->click(form.Nombre);
            this->type("x");
        });
        form.Nombre.Locked = false;
        form.cmdSalir.Enabled = false;
        leaves("disabled", "Guardado", [&] { this->click(form.cmdSalir); });
        form.cmdSalir.Enabled = true;

        leaves("typing", "", [&] {
            this->click(form.Nombre);
            this->type("x");
        });
        leaves("ticking", "", [&] { this->click(form.Activo); });
        leaves("space", "", [&] {
            form.setFocus(form.Activo);
            this->press(key::Space);
        });
        leaves("choosing", "", [&] { this->hands->choose(shown, form.Tipo, 1); });
        leaves("an arrow", "", [&] {
            form.setFocus(form.Tipo);
            this->press(key::Down);
        });
        leaves("a letter", "", [&] {
            form.setFocus(form.Tipo);
            this->type("a");
        });
        leaves("a row of a grid", "", [&] { this->hands->clickRow(shown, form.Lista, 2); });
        leaves("a row of a list", "", [&] { this->hands->clickRow(shown, form.Movimientos, 2); });
        leaves("a header", "", [&] { this->hands->clickHeader(shown, form.Lista, 0); });
        leaves("a cell button", "", [&] { this->hands->clickCellButton(shown, form.Lista, 1); });

        form.Nombre.Change = [&] { form.lblEstado.Caption = "Cambiado"; };
        leaves("what a handler says", "Cambiado", [&] {
            this->click(form.Nombre);
            this->type("y");
        });
        form.Nombre.LostFocus = [&] { form.lblEstado.Caption = "Nombre libre"; };
        leaves("what is said on leaving a field", "Nombre libre", [&] {
            this->click(form.Nombre);
            this->click(form.Activo);
        });
        form.cmdSalir.Click = nullptr;
        leaves("an accelerator", "", [&] { this->press('S', shift::Alt); });
    });
    EXPECT_EQ(form.find("LBLESTADO"), &form.lblEstado);
}

TYPED_TEST(ToolkitContract, a_progress_bar_shows_how_far_the_work_has_come_and_takes_no_focus) {
    auto& form = this->screen;
    form.Avance.Max = 12;
    form.cmdGuardar.Click = [&] { form.Avance.Value += 5; };
    this->perform([&](Form&) {
        EXPECT_EQ(this->seen(form.Avance), "0 de 12");
        this->click(form.cmdGuardar);
        this->click(form.cmdGuardar);
        EXPECT_EQ(this->seen(form.Avance), "10 de 12");
        this->click(form.Avance);
        EXPECT_EQ(form.activeControl(), &form.cmdGuardar);
    });
}

TYPED_TEST(ToolkitContract, what_is_typed_leads_to_a_row_by_the_first_column_that_has_it) {
    auto& form = this->screen;
    this->bindRows(30);
    this->fillList(30);
    form.Lista.Columns[1].Visible = false;
    this->perform([&](Form&) {
        form.setFocus(form.Lista);
        this->type("25");
        EXPECT_EQ(this->seen(form.Lista), 24);
        EXPECT_EQ(this->rows->currentRow(), 24);
        this->type("f");
        EXPECT_EQ(this->seen(form.Lista), 24) << "a hidden column";
        this->desktop->letPass(ListTyping::pause);
        this->type("2");
        EXPECT_EQ(this->seen(form.Lista), 25) << "the next one";
        this->desktop->letPass(ListTyping::pause);
        this->type("30");
        this->type("2");
        form.setFocus(form.Movimientos);
        this->type("aPÚnte 17");
        EXPECT_EQ(this->seen(form.Movimientos), 17);
        EXPECT_EQ(this->seen(form.Lista), 29) << "no row begins with 302";
        form.Movimientos.Enabled = false;
        this->type("3");
        EXPECT_EQ(form.Movimientos.currentRow(), 17);
    });
}

TYPED_TEST(ToolkitContract, letters_lead_to_an_item_together_unless_time_has_passed) {
    using std::chrono::milliseconds;
    auto& form = this->screen;
    this->perform([&](Form&) {
        form.setFocus(form.Tipo);
        this->type("p");
        EXPECT_EQ(this->seen(form.Tipo), "Pasivo");
        this->desktop->letPass(ListTyping::pause / 10);
        this->type("r");
        EXPECT_EQ(this->seen(form.Tipo), "Previsto");
        this->desktop->letPass(ListTyping::pause);
        this->type("p");
        EXPECT_EQ(this->seen(form.Tipo), "Pasivo");

        const auto before = this->desktop->now();
        this->desktop->wait(milliseconds(15));
        EXPECT_GE(this->desktop->now() - before, milliseconds(15));
        this->type("r");
        EXPECT_EQ(this->seen(form.Tipo), "Previsto");
    });
}

}  // namespace FendaMaestros::contract
