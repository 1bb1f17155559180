#include "platform/headless/TextEditor.h"

#include <algorithm>

#include "toolkit/Form.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

std::string utf8(const std::u32string& characters) {
    std::string text;
    for (const char32_t character : characters) text::append(text, character);
    return text;
}

}  // namespace

/// A text that the program has changed under the caret leaves it where it was, or at the end if it stood there.
void TextEditor::follow(const Form& form) {
    if (&form != form_) {
        if (form_) below_[form_] = std::move(at_);
        at_ = std::exchange(below_[&form], {});
        form_ = &form;
    }
    auto* const box = form.isOpen() ? dynamic_cast<TextBox*>(form.activeControl()) : nullptr;
    const bool arrives = box != at_.box;
    at_.box = box;
    if (!box) return;
    std::u32string text = text::characters(box->Text);
    if (arrives || text != at_.text) {
        at_.caret = arrives || at_.caret == at_.text.size() ? text.size() : std::min(at_.caret, text.size());
        at_.anchor = at_.caret;
        at_.text = std::move(text);
    }
    if (!box->AllSelected || end() - start() == at_.text.size()) return;
    at_.anchor = 0;
    at_.caret = at_.text.size();
}

bool TextEditor::key(Form& form, KeyStroke stroke) {
    if (!at_.box) return false;
    if (stroke.shift == shift::Control) return clipboard(form, stroke.code);
    if (stroke.shift > shift::Shift) return false;
    return motion(stroke) || erasure(form, stroke);
}

bool TextEditor::motion(KeyStroke stroke) {
    const bool selecting = stroke.shift == shift::Shift;
    switch (stroke.code) {
        case key::Home:
            moveTo(0, selecting);
            return true;
        case key::End:
            moveTo(at_.text.size(), selecting);
            return true;
        case key::Left:
            moveTo(at_.caret - std::min<std::size_t>(at_.caret, 1), selecting);
            return true;
        case key::Right:
            moveTo(std::min(at_.caret + 1, at_.text.size()), selecting);
            return true;
        default:
            return false;
    }
}

void TextEditor::moveTo(std::size_t caret, bool selecting) {
    at_.caret = caret;
    if (!selecting) at_.anchor = caret;
    at_.box->AllSelected = hasSelection() && end() - start() == at_.text.size();
}

bool TextEditor::erasure(Form& form, KeyStroke stroke) {
    const bool backwards = stroke.code == key::Backspace;
    if (!backwards && stroke.code != key::Delete) return false;
    if (backwards && !form.accepts(key::Backspace)) return true;
    follow(form);
    if (!at_.box) return true;
    if (stroke.code == key::Delete && stroke.shift) return clipboard(form, 'X');
    const bool selected = hasSelection();
    if (selected || (backwards ? at_.caret > 0 : at_.caret < at_.text.size()))
        replace(form, start() - (backwards && !selected), end() + (!backwards && !selected), {});
    return true;
}

bool TextEditor::clipboard(Form& form, int letter) {
    switch (letter) {
        case 'A':
            at_.anchor = 0;
            moveTo(at_.text.size(), true);
            return true;
        case 'C':
            copy();
            return true;
        case 'X':
            if (at_.box->Locked || !hasSelection()) return true;
            copy();
            replace(form, start(), end(), {});
            return true;
        case 'V':
            insert(form, text::oneLine(clipboard_));
            return true;
        default:
            return false;
    }
}

void TextEditor::copy() {
    if (hasSelection()) clipboard_ = at_.text.substr(start(), end() - start());
}

/// What the box refuses changes nothing, not even the selection.
void TextEditor::insert(Form& form, const std::u32string& typed) {
    if (!at_.box) return;
    const std::size_t kept = at_.text.size() - (end() - start());
    const std::size_t limit =
        at_.box->MaxLength > 0 ? static_cast<std::size_t>(at_.box->MaxLength) : kept + typed.size();
    std::u32string taken;
    for (const char32_t character : typed)
        if (kept + taken.size() < limit && form.accepts(character)) taken += character;
    // The screen may have moved the focus or shown something over itself meanwhile.
    follow(form);
    if (at_.box && !taken.empty()) replace(form, start(), end(), taken);
}

void TextEditor::replace(Form& form, std::size_t from, std::size_t to, const std::u32string& by) {
    if (at_.box->Locked) return;
    at_.text.replace(from, to - from, by);
    at_.anchor = at_.caret = from + by.size();
    form.edit(*at_.box, utf8(at_.text));
}

}  // namespace FendaMaestros
