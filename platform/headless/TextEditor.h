#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "toolkit/Operator.h"

namespace FendaMaestros {

class TextBox;

/// What the editing keys do to the text box with the focus: a caret and a selection in it, and a clipboard. Caret and
/// selection last while the box keeps the focus, also below a form that comes on top; in one that has just got it, the
/// whole text is selected if the box says so, and else the caret stands at the end.
class TextEditor {
public:
    /// To be called before each gesture and after it: takes note of where the focus is.
    void follow(const Form& form);
    /// Types a character, in place of what is selected.
    void type(Form& form, char32_t character) { insert(form, std::u32string(1, character)); }
    /// Arrows, Home and End, alone or with Shift; Del and Backspace; Ctrl with A, C, X and V. False for other keys.
    bool key(Form& form, KeyStroke stroke);

private:
    /// Where a person is on one form.
    struct Place {
        TextBox* box = nullptr;
        /// The text as the last gesture left it.
        std::u32string text;
        /// In characters. What lies between both is selected.
        std::size_t anchor = 0;
        std::size_t caret = 0;
    };

    std::size_t start() const { return std::min(at_.caret, at_.anchor); }
    std::size_t end() const { return std::max(at_.caret, at_.anchor); }
    bool hasSelection() const { return at_.caret != at_.anchor; }

    bool motion(KeyStroke stroke);
    bool erasure(Form& form, KeyStroke stroke);
    bool clipboard(Form& form, int letter);
    void moveTo(std::size_t caret, bool selecting);
    void copy();
    void insert(Form& form, const std::u32string& typed);
    /// Puts a text in place of the characters from `from` to `to`, and the caret behind it.
    void replace(Form& form, std::size_t from, std::size_t to, const std::u32string& by);

    Place at_;
    const Form* form_ = nullptr;
    /// Of the forms that others have come on top of. A form that is gone is never looked at, only its address compared.
    std::map<const Form*, Place> below_;
    std::u32string clipboard_;
};

}  // namespace FendaMaestros
