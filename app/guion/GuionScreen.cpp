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

std::vector<std::string> captions(const Control& list) {
    std::vector<std::string> texts;
    if (const auto* grid = dynamic_cast<const DataGrid*>(&list))
        for (const GridColumn& column : grid->Columns) texts.push_back(column.Caption);
    if (const auto* view = dynamic_cast<const ListView*>(&list))
        for (const auto& column : view->Columns) texts.push_back(column.Caption);
    return texts;
}

void failUnlessRows(const Control& list) {
    if (rowCount(list) < 0) fail(list.Name + " no es una rejilla ni una lista");
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
        if (dynamic_cast<CommandButton*>(control) && same(text::replaced(captionOf(*control), "&", ""), name))
            return *control;
    fail("la pantalla " + formName(form) + " no tiene ningún control " + name);
}

int rowCount(const Control& list) {
    if (const auto* grid = dynamic_cast<const DataGrid*>(&list)) return grid->rowCount();
    if (const auto* view = dynamic_cast<const ListView*>(&list)) return static_cast<int>(view->Rows.size());
    return -1;
}

int currentRow(const Control& list) {
    if (const auto* grid = dynamic_cast<const DataGrid*>(&list)) return grid->currentRow();
    return dynamic_cast<const ListView&>(list).SelectedRow;
}

std::vector<std::string> cells(const Control& list, int row) {
    if (const auto* view = dynamic_cast<const ListView*>(&list)) return view->Rows[static_cast<std::size_t>(row)].Texts;
    const auto& grid = dynamic_cast<const DataGrid&>(list);
    std::vector<std::string> texts;
    for (std::size_t column = 0; column < grid.Columns.size(); ++column)
        if (grid.Columns[column].Visible) texts.push_back(grid.cellText(row, static_cast<int>(column)));
    return texts;
}

int columnOf(const Control& list, const Place& column) {
    failUnlessRows(list);
    const std::vector<std::string> shown = captions(list);
    const int count = static_cast<int>(shown.size());
    if (column.isNumber() && column.number < count) return column.number;
    for (int index = 0; index < count && !column.isNumber(); ++index)
        if (same(unmarked(shown[static_cast<std::size_t>(index)]), unmarked(column.text))) return index;
    fail(list.Name + " no tiene la columna " + describe(column));
}

int rowOf(const Control& list, const Place& row) {
    failUnlessRows(list);
    const int count = rowCount(list);
    if (row.number >= 1 && row.number <= count) return row.number - 1;
    for (int index = 0; index < count && !row.isNumber(); ++index)
        if (std::ranges::any_of(cells(list, index), [&](const std::string& cell) { return same(cell, row.text); }))
            return index;
    fail(list.Name + " no tiene la fila " + describe(row));
}

int itemOf(const ComboBox& combo, const Place& item) {
    if (item.isNumber()) return item.number < combo.ListCount() ? item.number : -1;
    for (int index = 0; index < combo.ListCount(); ++index)
        if (same(combo.List(index), item.text)) return index;
    return -1;
}

}  // namespace FendaMaestros::guion
