#include "app/guion/GuionHands.h"

#include <map>
#include <string_view>

#include "app/guion/GuionPrinter.h"
#include "toolkit/Keys.h"

namespace FendaMaestros {

using guion::fail;
using guion::literal;
using guion::Place;

namespace {

constexpr const char* interrupted = "un mensaje ha interrumpido el gesto, que no llega a hacerse";

template <class T>
T* firstOf(const Form& form) {
    for (Control* control : form.controls())
        if (auto* typed = dynamic_cast<T*>(control)) return typed;
    return nullptr;
}

/// With the mouse one goes to what holds a text or rows; the rest is acted on.
void failUnlessGoneTo(Control& target, const std::string& name) {
    static const std::map<std::string_view, const char*> acts{
        {guion::kind::button, " es un mando: con el ratón se pulsa (pulsar)"},
        {guion::kind::check, " es una casilla: con el ratón se marca (marcar, desmarcar)"},
        {guion::kind::option, " es una opción: con el ratón se elige (elegir)"},
    };
    const auto found = acts.find(guion::kindOf(target));
    if (found != acts.end()) fail(name + found->second);
}

}  // namespace

bool GuionHands::reaches(const Control& control) {
    const bool visible = control.isVisible();
    if (visible && control.isEnabled() && top().Enabled) return true;
    note(control.Name + (visible ? " está inactivo" : " está oculto") + ": no pasa nada");
    return false;
}

template <class Gesture>
void GuionHands::act(Gesture&& gesture) {
    Form& form = top();
    const int before = form.abandonedGestures();
    gesture(form, host_.gestures());
    if (form.isOpen() && form.abandonedGestures() != before) note(interrupted);
}

template <class Gesture>
void GuionHands::actOn(const Control& control, Gesture&& gesture) {
    if (reaches(control)) act(gesture);
}

// --- the keyboard

void GuionHands::type(const std::string& text) {
    Form& form = top();
    Control* const active = form.activeControl();
    const auto* const box = dynamic_cast<const TextBox*>(active);
    if (box && box->Locked) note(box->Name + " está bloqueado: no cambia");
    if (!box && !(active && active->asList())) note("el foco no está en un campo: no se escribe nada");
    std::string typed = text;
    std::erase_if(typed, [](unsigned char c) { return c < ' '; });
    if (typed != text) note("los caracteres de control no se teclean");
    host_.gestures().type(form, typed);
}

void GuionHands::key(KeyStroke stroke, int times) {
    Form& form = top();
    for (int time = 0; time < times && form.isOpen(); ++time)
        act([&](Form& on, Gestures& hands) { hands.key(on, stroke); });
}

// --- the mouse

void GuionHands::go(const std::string& name) {
    Control& target = control(name);
    failUnlessGoneTo(target, name);
    Form& form = top();
    if (form.activeControl() == &target || !reaches(target)) return;
    host_.gestures().click(form, target);
    if (form.isOpen() && form.activeControl() != &target) note(interrupted);
}

void GuionHands::press(const std::string& name) {
    auto& button = control<CommandButton>(name, "un mando");
    actOn(button, [&](Form& form, Gestures& hands) { hands.click(form, button); });
}

void GuionHands::tick(const std::string& name, bool value) {
    auto& check = control<CheckBox>(name, "una casilla");
    if (!reaches(check)) return;
    if (check.Value() == value) return note(check.Name + (value ? " ya está marcada" : " ya está sin marcar"));
    act([&](Form& form, Gestures& hands) { hands.click(form, check); });
}

void GuionHands::choose(const std::string& name, const std::optional<Place>& item) {
    if (auto* option = top().find<OptionButton>(name)) {
        if (item) fail(name + " es una opción: se elige sin más");
        return actOn(*option, [&](Form& form, Gestures& hands) { hands.click(form, *option); });
    }
    auto& combo = control<ComboBox>(name, "una opción ni un desplegable");
    if (!item) fail("falta qué elemento de " + name + " se elige");
    const int index = guion::itemOf(combo, *item);
    if (index < 0) fail(name + " no tiene el elemento " + guion::describe(*item));
    actOn(combo, [&](Form& form, Gestures& hands) { hands.choose(form, combo, index); });
}

void GuionHands::clickHeader(const std::string& name, const Place& column) {
    auto& grid = control<DataGrid>(name, "una rejilla");
    const int index = guion::columnOf(grid, column);
    if (!grid.column(index).Visible)
        return note("la columna " + std::to_string(index) + " de " + grid.Name + " está oculta: no pasa nada");
    actOn(grid, [&](Form& form, Gestures& hands) { hands.clickHeader(form, grid, index); });
}

void GuionHands::clickRow(const std::string& name, const Place& row) {
    Table& table = guion::table(top(), name);
    const int index = guion::rowOf(table, row);
    actOn(table, [&](Form& form, Gestures& hands) { hands.clickRow(form, table, index); });
}

void GuionHands::doubleClickRow(const std::string& name, const std::optional<Place>& row) {
    Table& grid = guion::table(top(), name);
    const int index = row ? guion::rowOf(grid, *row) : grid.currentRow();
    if (index < 0) fail(name + " no tiene ninguna fila actual");
    actOn(grid, [&](Form& form, Gestures& hands) { hands.doubleClickRow(form, grid, index); });
}

void GuionHands::clickCellButton(const std::string& name, const Place& column) {
    auto& grid = control<DataGrid>(name, "una rejilla");
    const int index = guion::columnOf(grid, column);
    const GridColumn& shown = grid.column(index);
    if (!shown.Button || !shown.Visible)
        fail("la columna " + std::to_string(index) + " de " + name + " no tiene botón");
    if (grid.currentRow() < 0) fail(name + " no tiene ninguna fila actual");
    actOn(grid, [&](Form& form, Gestures& hands) { hands.clickCellButton(form, grid, index); });
}

void GuionHands::close() { host_.gestures().close(top()); }

// --- the search dialog

void GuionHands::search(Form& dialog, const ExpectedSearch& wanted) {
    Gestures& hands = host_.gestures();
    out_ << "búsqueda " << literal(dialog.Caption);
    if (wanted.leave) {
        out_ << " → ninguno\n";
        return hands.key(dialog, {key::Escape, shift::None});
    }
    auto* const box = firstOf<TextBox>(dialog);
    const Table* const list = firstOf<Table>(dialog);
    if (!box || !list) fail("la pantalla de búsqueda no tiene un campo y una lista");

    hands.click(dialog, *box);
    hands.type(dialog, wanted.text);
    const int count = list->rowCount();
    out_ << " texto=" << literal(wanted.text) << " filas=" << count << " → ";
    if (wanted.row > count) {
        out_ << "no hay fila " << wanted.row << "\n";
        fail("la búsqueda de " + literal(wanted.text) + " no llega a la fila " + std::to_string(wanted.row));
    }
    goDown(dialog, *list, wanted.row - 1);
    out_ << "fila " << wanted.row;
    for (const std::string& cell : guion::cells(*list, wanted.row - 1)) out_ << " | " << literal(cell);
    out_ << "\n";
    hands.key(dialog, {key::Enter, shift::None});
}

void GuionHands::goDown(Form& dialog, const Table& list, int row) {
    for (int last = -2; list.currentRow() < row && list.currentRow() != last;) {
        last = list.currentRow();
        host_.gestures().key(dialog, {key::Down, shift::None});
    }
}

}  // namespace FendaMaestros
