#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "toolkit/Desktop.h"
#include "toolkit/Keys.h"

namespace FendaMaestros {

class ComboBox;
class Control;
class DataGrid;
class Form;
class Table;

/// Someone who works in a person's place on a desktop: a script or a test. A desktop with an operator asks it instead
/// of waiting for a person.
class Operator {
public:
    virtual ~Operator() = default;

    /// The form is on top and idle: make gestures on it until it is closed. Called once for each form shown; when it
    /// returns with the form open, the desktop closes the form.
    virtual void attend(Form& form) = 0;
    /// Whether the person presses Esc while long work shows how far it has come.
    virtual bool stopsWork() { return false; }
    /// Throws when the message was not expected.
    virtual Reply answer(const Message& message) = 0;
    /// Throws when the question was not expected.
    virtual std::optional<std::string> saveFile(const std::string& proposal, const std::string& kind) = 0;
    /// The file to open; nothing leaves the question without an answer.
    virtual std::optional<std::string> openFile(const std::string& /*kind*/) { return std::nullopt; }
};

/// A person's hands: each call does to the form on top what the gesture does, through all that a real one goes through
/// on that desktop, and returns when the form is idle again. Gestures on what is disabled or hidden do nothing.
class Gestures {
public:
    virtual ~Gestures() = default;

    /// Types characters into what has the focus.
    virtual void type(Form& form, std::string_view text) = 0;
    /// Presses and releases a key.
    virtual void key(Form& form, KeyStroke stroke) = 0;
    /// Clicks on a button, check, option or field.
    virtual void click(Form& form, Control& control) = 0;
    virtual void choose(Form& form, ComboBox& combo, int index) = 0;
    virtual void clickHeader(Form& form, DataGrid& grid, int column) = 0;
    virtual void clickRow(Form& form, Table& table, int row) = 0;
    virtual void doubleClickRow(Form& form, Table& table, int row) = 0;
    /// The cell button of the current row.
    virtual void clickCellButton(Form& form, DataGrid& grid, int column) = 0;
    /// The window's close box.
    virtual void close(Form& form) = 0;
};

}  // namespace FendaMaestros
