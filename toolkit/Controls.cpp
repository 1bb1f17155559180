#include "toolkit/Controls.h"

#include "toolkit/Format.h"

namespace FendaMaestros {

bool Control::isEnabled() const {
    for (const Control* control = this; control; control = control->Container)
        if (!control->Enabled) return false;
    return true;
}

bool Control::isVisible() const {
    for (const Control* control = this; control; control = control->Container)
        if (!control->Visible) return false;
    return true;
}

void ComboBox::Clear() {
    items_.clear();
    listIndex_ = -1;
}

void ComboBox::setListIndex(int index) {
    if (index < -1 || index >= ListCount())
        throw std::out_of_range("La lista " + Name + " no tiene el elemento " + std::to_string(index));
    listIndex_ = index;
    if (Click) Click();
}

void CheckBox::setValue(bool value) {
    if (value == value_) return;
    value_ = value;
    if (Click) Click();
}

void OptionButton::setValue(bool value) {
    if (value == value_) return;
    value_ = value;
    if (!value_) return;
    for (OptionButton* other : Group)
        if (other != this) other->value_ = false;
    if (Click) Click();
}

void DataGrid::bind(std::shared_ptr<RowSource> source) {
    source_ = std::move(source);
    Columns.clear();
    if (!source_) return;
    for (int column = 0; column < source_->columnCount(); ++column)
        Columns.push_back({.Caption = source_->columnName(column), .SourceColumn = column, .NumberFormat = {}});
    moveToRow(source_->currentRow());
}

void DataGrid::moveToRow(int row) {
    const std::shared_ptr<RowSource> rows = source_;
    if (rows) rows->moveToRow(row);
}

std::string DataGrid::cellText(int row, int column) const {
    const GridColumn& shown = Columns.at(static_cast<std::size_t>(column));
    return format(source_->cell(row, shown.SourceColumn), shown.NumberFormat);
}

}  // namespace FendaMaestros
