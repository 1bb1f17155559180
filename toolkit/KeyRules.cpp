#include "toolkit/KeyRules.h"

#include <algorithm>

namespace FendaMaestros {

namespace {

constexpr int rowsOfAPage = 10;

/// Where a key leads from `current` among `count` rows; -1 when it leads nowhere.
int rowAfterKey(int code, int current, int count) {
    if (count == 0) return -1;
    int row = current;
    switch (code) {
        case key::Up:
            row = current - 1;
            break;
        case key::Down:
            row = current + 1;
            break;
        case key::PageUp:
            row = current - rowsOfAPage;
            break;
        case key::PageDown:
            row = current + rowsOfAPage;
            break;
        case key::Home:
            row = 0;
            break;
        case key::End:
            row = count - 1;
            break;
        default:
            return -1;
    }
    return std::clamp(row, 0, count - 1);
}

/// The n-th visible column, from 0; -1 when there are not so many.
int visibleColumn(const Table& table, int nth) {
    for (int column = 0; nth >= 0 && column < table.columnCount(); ++column)
        if (table.column(column).Visible && nth-- == 0) return column;
    return -1;
}

/// The member of its group, among those that can be reached, that an arrow leads to from an option.
OptionButton* neighbour(OptionButton& option, bool forwards) {
    const auto& group = option.Group;
    const auto count = group.size();
    auto at = static_cast<std::size_t>(std::ranges::find(group, &option) - group.begin());
    for (std::size_t tried = 0; tried < count; ++tried) {
        at = (at + (forwards ? 1 : count - 1)) % count;
        if (group[at]->isEnabled() && group[at]->isVisible()) return group[at];
    }
    return nullptr;
}

class KeyRules final : public ControlVisitor {
public:
    explicit KeyRules(KeyStroke stroke) : stroke_(stroke) {}

    KeyEffect effect;

    void visit(Label&) override { leave(); }
    void visit(Frame&) override { leave(); }
    void visit(ProgressBar&) override { leave(); }
    void visit(PageView&) override { leave(); }
    void visit(TextBox&) override { leave(); }

    void visit(CommandButton& button) override { pressWithSpace(button); }
    void visit(CheckBox& check) override { pressWithSpace(check); }
    void visit(OptionButton& option) override {
        pressWithSpace(option);
        const bool forwards = stroke_.code == key::Down || stroke_.code == key::Right;
        if (!forwards && stroke_.code != key::Up && stroke_.code != key::Left) return;
        OptionButton* const next = neighbour(option, forwards);
        if (!next) return;
        effect.change = [next] { next->press(); };
        effect.focus = next;
    }

    void visit(ComboBox& combo) override {
        const int index = rowAfterKey(stroke_.code, combo.ListIndex(), combo.ListCount());
        effect.done = index >= 0;
        if (index >= 0 && index != combo.ListIndex()) effect.change = [&combo, index] { combo.setListIndex(index); };
    }

    void visit(ListView& list) override { moveInRows(list); }
    void visit(DataGrid& grid) override {
        moveInRows(grid);
        if (stroke_.shift != shift::Control || !grid.HeadClick) return;
        const int column = visibleColumn(grid, stroke_.code - '1');
        if (column < 0) return;
        effect.change = [&grid, column] { grid.HeadClick(column); };
        effect.done = true;
    }

private:
    void leave() { effect.done = false; }
    void pressWithSpace(Button& button) {
        if (stroke_.code == key::Space) effect.change = [&button] { button.press(); };
    }
    void moveInRows(Table& table) {
        const int row = rowAfterKey(stroke_.code, table.currentRow(), table.rowCount());
        if (row >= 0) effect.change = [&table, row] { table.moveToRow(row); };
        if (stroke_.code == key::Space && table.DblClick && table.currentRow() >= 0) effect.change = table.DblClick;
        // What does nothing else may be a character that leads to a row.
        effect.done = effect.change != nullptr;
    }

    KeyStroke stroke_;
};

}  // namespace

KeyEffect effectOf(KeyStroke stroke, Control& control) {
    KeyRules rules(stroke);
    control.accept(rules);
    return rules.effect;
}

}  // namespace FendaMaestros
