#include "toolkit/Controls.h"

#include <algorithm>
#include <utility>

#include "toolkit/Format.h"
#include "toolkit/Text.h"

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

const std::string& Control::caption() const {
    static const std::string none;
    return none;
}

void Label::accept(ControlVisitor& visitor) { visitor.visit(*this); }
void Frame::accept(ControlVisitor& visitor) { visitor.visit(*this); }
void TextBox::accept(ControlVisitor& visitor) { visitor.visit(*this); }
void ComboBox::accept(ControlVisitor& visitor) { visitor.visit(*this); }
void CommandButton::accept(ControlVisitor& visitor) { visitor.visit(*this); }
void CheckBox::accept(ControlVisitor& visitor) { visitor.visit(*this); }
void OptionButton::accept(ControlVisitor& visitor) { visitor.visit(*this); }
void DataGrid::accept(ControlVisitor& visitor) { visitor.visit(*this); }
void ListView::accept(ControlVisitor& visitor) { visitor.visit(*this); }
void PageView::accept(ControlVisitor& visitor) { visitor.visit(*this); }
void ProgressBar::accept(ControlVisitor& visitor) { visitor.visit(*this); }

void StatusLabel::say(std::string text, StatusKind kind) {
    Caption = std::move(text);
    Kind = kind;
}

std::string StatusLabel::shown() const {
    if (Caption.empty() || Kind == StatusKind::Plain) return Caption;
    return (Kind == StatusKind::Good ? "✓ " : "! ") + Caption;
}

bool TextBox::takes(char32_t character) {
    if (Locked) return false;
    int ascii = static_cast<int>(character);
    if (KeyPress) KeyPress(ascii);
    return ascii != 0;
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

int Button::accelerator() const {
    const auto mark = Caption.find('&');
    if (mark == std::string::npos || mark + 1 == Caption.size()) return 0;
    const unsigned char letter = static_cast<unsigned char>(Caption[mark + 1]);
    return letter >= 'a' && letter <= 'z' ? letter - 'a' + 'A' : letter;
}

std::vector<KeyHint> Button::keys() const {
    const std::string does = text::trim(text::replaced(Caption, "&", ""));
    std::vector<KeyHint> all;
    if (Key.code != 0) all.push_back({Key, does});
    if (const int letter = accelerator()) all.push_back({{letter, shift::Alt}, does});
    return all;
}

void CommandButton::press() {
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

bool OptionButton::stopsTab() const {
    return TabStop &&
           (value_ || std::ranges::none_of(Group, [](const OptionButton* member) { return member->Value(); }));
}

bool PageView::scroll(int direction) {
    const int wanted = std::clamp(Scrolled + direction * Screenful, 0, ScrollEnd);
    return std::exchange(Scrolled, wanted) != wanted;
}

void DataGrid::bind(std::shared_ptr<RowSource> source) {
    source_ = std::move(source);
    MarkedRow = -1;
    Inactive = {};
    Columns.clear();
    if (!source_) return;
    for (int column = 0; column < source_->columnCount(); ++column) {
        GridColumn& shown = Columns.emplace_back();
        shown.Caption = source_->columnName(column);
        shown.SourceColumn = column;
    }
    moveToRow(source_->currentRow());
}

void DataGrid::moveToRow(int row) {
    const std::shared_ptr<RowSource> rows = source_;
    if (rows) rows->moveToRow(row);
}

std::string DataGrid::cellText(int row, int column) const {
    const GridColumn& shown = this->column(column);
    return format(source_->cell(row, shown.SourceColumn), shown.NumberFormat);
}

std::string ListView::cellText(int row, int column) const {
    const auto& texts = Rows.at(static_cast<std::size_t>(row)).Texts;
    return column < static_cast<int>(texts.size()) ? texts[static_cast<std::size_t>(column)] : std::string();
}

}  // namespace FendaMaestros
