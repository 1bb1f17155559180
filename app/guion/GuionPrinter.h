#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "toolkit/Form.h"

/// What a script prints: one line a thing, in an order and with attributes that docs/guion.md promises.
namespace FendaMaestros::guion {

/// A text between quotes as a script would write it: quotes, backslashes, line ends and control characters escaped.
std::string literal(std::string_view text);
/// NULL, a number's digits, or a quoted text.
std::string literalOf(const Variant& value);

/// The class of a screen: "frmCentros".
std::string formName(const Form& form);
/// What a person reads on a message box, without the answer.
std::string describe(const Message& message);
std::string nameOf(Answer answer);

namespace kind {
inline constexpr std::string_view button = "mando", check = "casilla", option = "opción";
}  // namespace kind

/// The word for a kind of control: one of those above, "campo", "rejilla"...
std::string_view kindOf(Control& control);
/// What a control shows as one text: a field's or a list's text, sí or no, or its caption.
std::string valueOf(Control& control);

struct Limits {
    int rows = 50;
};

/// The screen and every visible control.
void printScreen(std::ostream& out, const Form& form, int pointer, Limits limits);
/// One control, visible or not, with all its rows or items as far as the limits go.
void printControl(std::ostream& out, const Form& form, Control& control, Limits limits);
/// The rows of a read under the names of their columns.
void printRows(std::ostream& out, const RowSource& rows, Limits limits);

}  // namespace FendaMaestros::guion
