#include "platform/headless/HeadlessGestures.h"

#include <functional>

#include "toolkit/Form.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

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

void HeadlessGestures::insert(Form& form, char32_t character) {
    if (form.typeOnList(character)) return;
    editor_.follow(form);
    editor_.type(form, character);
}

void HeadlessGestures::type(Form& form, std::string_view text) {
    for (const char32_t character : text::characters(text)) {
        if (!form.isOpen()) return;
        editor_.follow(form);
        stroke(form, {key::ofCharacter(character), shift::None}, [&] { insert(form, character); });
        editor_.follow(form);
    }
}

void HeadlessGestures::key(Form& form, KeyStroke pressed) {
    editor_.follow(form);
    stroke(form, pressed, [&] {
        editor_.follow(form);
        if (editor_.key(form, pressed) || pressed.shift > shift::Shift || !isPrintable(pressed.code)) return;
        const bool small = pressed.code >= 'A' && pressed.shift == shift::None;
        insert(form, static_cast<char32_t>(small ? pressed.code - 'A' + 'a' : pressed.code));
    });
    editor_.follow(form);
}

void HeadlessGestures::click(Form& form, Control& control) {
    if (Button* const button = control.asButton())
        form.press(*button);
    else
        form.focus(control);
    editor_.follow(form);
}

void HeadlessGestures::choose(Form& form, ComboBox& combo, int index) {
    // Opening the list is a gesture of its own: what leaving a field has to say comes before the choice.
    form.focus(combo);
    if (form.activeControl() == &combo) form.choose(combo, index);
    editor_.follow(form);
}

void HeadlessGestures::clickHeader(Form& form, DataGrid& grid, int column) {
    form.clickHeader(grid, column);
    editor_.follow(form);
}

void HeadlessGestures::clickRow(Form& form, Table& table, int row) {
    form.selectRow(table, row);
    editor_.follow(form);
}

void HeadlessGestures::doubleClickRow(Form& form, Table& table, int row) {
    const int before = form.interruptions();
    form.selectRow(table, row);
    if (form.isOpen() && form.interruptions() == before) form.doubleClick(table);
    editor_.follow(form);
}

void HeadlessGestures::clickCellButton(Form& form, DataGrid& grid, int column) {
    form.clickCellButton(grid, column);
    editor_.follow(form);
}

void HeadlessGestures::close(Form& form) {
    form.close();
    editor_.follow(form);
}

}  // namespace FendaMaestros
