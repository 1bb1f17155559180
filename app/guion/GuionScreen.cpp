#include "app/guion/GuionScreen.h"

#include <algorithm>

#include "app/guion/GuionPrinter.h"
#include "toolkit/Text.h"

namespace FendaMaestros::guion {

namespace {

bool same(std::string_view a, std::string_view b) { return text::folded(text::trim(a)) == text::folded(text::trim(b)); }

/// A column caption without the mark of its sort order.
std::string unmarked(const std::string& caption) {
    return text::trimEnd(text::replaced(text::replaced(caption, "»", ""), "«", ""));
}

}  // namespace

std::string describe(const Place& place) {
    return place.isNumber() ? std::to_string(place.number) : literal(place.text);
}

Form& topScreen(const Desktop& desktop) {
    Form* const form = desktop.activeForm();
    if (!form) fail("no hay ninguna pantalla abierta");
    return *form;
}

Control& control(const Form& form, const std::string& name) {
    if (Control* found = form.find(name)) return *found;
    for (Control* control : form.controls())
        if (kindOf(*control) == kind::button && same(text::replaced(control->caption(), "&", ""), name))
            return *control;
    fail("la pantalla " + formName(form) + " no tiene ningún control " + name);
}

std::vector<std::string> cells(const Table& table, int row) {
    std::vector<std::string> texts;
    for (int column = 0; column < table.columnCount(); ++column)
        if (table.column(column).Visible) texts.push_back(table.cellText(row, column));
    return texts;
}

int columnOf(const Table& table, const Place& column) {
    if (column.isNumber() && column.number < table.columnCount()) return column.number;
    for (int index = 0; index < table.columnCount() && !column.isNumber(); ++index)
        if (same(unmarked(table.column(index).Caption), unmarked(column.text))) return index;
    fail(table.Name + " no tiene la columna " + describe(column));
}

int rowOf(const Table& table, const Place& row) {
    if (row.number >= 1 && row.number <= table.rowCount()) return row.number - 1;
    for (int index = 0; index < table.rowCount() && !row.isNumber(); ++index)
        if (std::ranges::any_of(cells(table, index), [&](const std::string& cell) { return same(cell, row.text); }))
            return index;
    fail(table.Name + " no tiene la fila " + describe(row));
}

int itemOf(const ComboBox& combo, const Place& item) {
    if (item.isNumber()) return item.number < combo.ListCount() ? item.number : -1;
    for (int index = 0; index < combo.ListCount(); ++index)
        if (same(combo.List(index), item.text)) return index;
    return -1;
}

}  // namespace FendaMaestros::guion
