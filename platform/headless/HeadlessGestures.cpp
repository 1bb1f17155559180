#include "platform/headless/HeadlessGestures.h"

#include <functional>

#include "toolkit/Form.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

void insert(Form& form, char32_t character) {
    if (auto* combo = dynamic_cast<ComboBox*>(form.activeControl())) return form.typeAhead(*combo, character);
    auto* box = dynamic_cast<TextBox*>(form.activeControl());
    if (!box || !form.accepts(character)) return;
    std::string text = box->AllSelected ? std::string() : box->Text;
    text::append(text, character);
    form.edit(*box, std::move(text));
}

void erase(Form& form, int code) {
    auto* box = dynamic_cast<TextBox*>(form.activeControl());
    if (!box || (code == key::Backspace && !form.accepts(key::Backspace))) return;
    if (box->AllSelected) return form.edit(*box, {});
    if (code != key::Backspace || box->Text.empty()) return;
    form.edit(*box, text::left(box->Text, text::length(box->Text) - 1));
}

void selectAll(Form& form) {
    if (auto* box = dynamic_cast<TextBox*>(form.activeControl())) box->AllSelected = true;
}

/// A key goes down, does `typed` if the form leaves it to the text, and comes up. When something was shown over the
/// form meanwhile, the release goes there and not to the form.
void stroke(Form& form, KeyStroke stroke, const std::function<void()>& typed) {
    const int before = form.interruptions();
    if (!form.keyDown(stroke)) typed();
    if (form.isOpen() && form.interruptions() == before) form.keyUp(stroke);
}

bool isPrintable(int code) {
    return (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') || code == key::Space;
}

}  // namespace

void HeadlessGestures::type(Form& form, std::string_view text) {
    for (const char32_t character : text::characters(text)) {
        if (!form.isOpen()) return;
        stroke(form, {key::ofCharacter(character), shift::None}, [&] { insert(form, character); });
    }
}

void HeadlessGestures::key(Form& form, KeyStroke pressed) {
    stroke(form, pressed, [&] {
        if (pressed.code == key::Backspace || pressed.code == key::Delete) return erase(form, pressed.code);
        if (pressed.code == 'A' && pressed.shift == shift::Control) return selectAll(form);
        if (pressed.shift > shift::Shift || !isPrintable(pressed.code)) return;
        const bool small = pressed.code >= 'A' && pressed.shift == shift::None;
        insert(form, static_cast<char32_t>(small ? pressed.code - 'A' + 'a' : pressed.code));
    });
}

void HeadlessGestures::click(Form& form, Control& control) {
    if (auto* button = dynamic_cast<CommandButton*>(&control)) return form.press(*button);
    if (auto* check = dynamic_cast<CheckBox*>(&control)) return form.toggle(*check);
    if (auto* option = dynamic_cast<OptionButton*>(&control)) return form.pick(*option);
    form.focus(control);
}

void HeadlessGestures::choose(Form& form, ComboBox& combo, int index) { form.choose(combo, index); }

void HeadlessGestures::clickHeader(Form& form, DataGrid& grid, int column) { form.clickHeader(grid, column); }

void HeadlessGestures::clickRow(Form& form, Control& gridOrList, int row) {
    if (auto* grid = dynamic_cast<DataGrid*>(&gridOrList)) form.selectRow(*grid, row);
    if (auto* list = dynamic_cast<ListView*>(&gridOrList)) form.selectRow(*list, row);
}

void HeadlessGestures::doubleClickRow(Form& form, DataGrid& grid, int row) {
    const int before = form.interruptions();
    form.selectRow(grid, row);
    if (form.isOpen() && form.interruptions() == before) form.doubleClick(grid);
}

void HeadlessGestures::clickCellButton(Form& form, DataGrid& grid, int column) { form.clickCellButton(grid, column); }

void HeadlessGestures::close(Form& form) { form.close(); }

}  // namespace FendaMaestros
