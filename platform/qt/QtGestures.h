#pragma once

#include "toolkit/Operator.h"

namespace FendaMaestros {

/// Gestures on real windows: events as keyboard and mouse make them, sent to the widgets that show the controls. What a
/// handler throws is thrown by the gesture.
class QtGestures final : public Gestures {
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
};

}  // namespace FendaMaestros
