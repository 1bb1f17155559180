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
    auto* const box = form.isOpen() ? dynamic_cast<TextBox*>(form.activeControl()) : nullptr;
    const bool arrives = box != box_;
    box_ = box;
    if (!box) return;
    std::u32string text = text::characters(box->Text);
    if (arrives || text != text_) {
        caret_ = arrives || caret_ == text_.size() ? text.size() : std::min(caret_, text.size());
        anchor_ = caret_;
        text_ = std::move(text);
    }
    if (!box->AllSelected || end() - start() == text_.size()) return;
    anchor_ = 0;
    caret_ = text_.size();
}

bool TextEditor::key(Form& form, KeyStroke stroke) {
    if (!box_) return false;
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
            moveTo(text_.size(), selecting);
            return true;
        case key::Left:
            moveTo(caret_ - std::min<std::size_t>(caret_, 1), selecting);
            return true;
        case key::Right:
            moveTo(std::min(caret_ + 1, text_.size()), selecting);
            return true;
        default:
            return false;
    }
}

void TextEditor::moveTo(std::size_t caret, bool selecting) {
    caret_ = caret;
    if (!selecting) anchor_ = caret;
    box_->AllSelected = hasSelection() && end() - start() == text_.size();
}

bool TextEditor::erasure(Form& form, KeyStroke stroke) {
    const bool backwards = stroke.code == key::Backspace;
    if (!backwards && stroke.code != key::Delete) return false;
    if (backwards && !form.accepts(key::Backspace)) return true;
    follow(form);
    if (!box_) return true;
    if (stroke.code == key::Delete && stroke.shift) return clipboard(form, 'X');
    const bool selected = hasSelection();
    if (selected || (backwards ? caret_ > 0 : caret_ < text_.size()))
        replace(form, start() - (backwards && !selected), end() + (!backwards && !selected), {});
    return true;
}

bool TextEditor::clipboard(Form& form, int letter) {
    switch (letter) {
        case 'A':
            anchor_ = 0;
            moveTo(text_.size(), true);
            return true;
        case 'C':
            copy();
            return true;
        case 'X':
            if (box_->Locked || !hasSelection()) return true;
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
    if (hasSelection()) clipboard_ = text_.substr(start(), end() - start());
}

/// What the box refuses changes nothing, not even the selection.
void TextEditor::insert(Form& form, const std::u32string& typed) {
    if (!box_) return;
    const std::size_t kept = text_.size() - (end() - start());
    const std::size_t limit = box_->MaxLength > 0 ? static_cast<std::size_t>(box_->MaxLength) : kept + typed.size();
    std::u32string taken;
    for (const char32_t character : typed)
        if (kept + taken.size() < limit && form.accepts(character)) taken += character;
    // The screen may have moved the focus or shown something over itself meanwhile.
    follow(form);
    if (box_ && !taken.empty()) replace(form, start(), end(), taken);
}

void TextEditor::replace(Form& form, std::size_t from, std::size_t to, const std::u32string& by) {
    if (box_->Locked) return;
    text_.replace(from, to - from, by);
    anchor_ = caret_ = from + by.size();
    form.edit(*box_, utf8(text_));
}

}  // namespace FendaMaestros
