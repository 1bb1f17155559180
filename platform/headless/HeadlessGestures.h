#pragma once

#include "platform/headless/TextEditor.h"
#include "toolkit/Operator.h"

namespace FendaMaestros {

/// Gestures straight on the forms. The keys that edit a field do what they do in a window.
class HeadlessGestures final : public Gestures {
public:
    void type(Form& form, std::string_view text) override;
    void key(Form& form, KeyStroke stroke) override;
    void click(Form& form, Control& control) override;
    void choose(Form& form, ComboBox& combo, int index) override;
    void clickHeader(Form& form, DataGrid& grid, int column) override;
    void clickRow(Form& form, Table& table, int row) override;
    void doubleClickRow(Form& form, Table& table, int row) override;
    void clickCellButton(Form& form, DataGrid& grid, int column) override;
    void close(Form& form) override;

private:
    /// A character for what has the focus.
    void insert(Form& form, char32_t character);

    TextEditor editor_;
};

}  // namespace FendaMaestros
