#include "ui/ListPair.h"

namespace FendaMaestros {

ListPair::ListPair(std::string name) : combos_(std::move(name), {0, 1}) { combos_(1).Visible = false; }

void ListPair::load(const std::string& none, Recordset& rows, const char* nameColumn, const char* idColumn) {
    const auto addRow = [this](const std::string& name, const std::string& id) {
        combos_(0).AddItem(name);
        combos_(1).AddItem(id);
    };
    addRow(none, "0");
    for (; !rows.Eof(); rows.MoveNext())
        addRow(rows.Fields(nameColumn).Value.text(), rows.Fields(idColumn).Value.text());
    chooseFirst();
}

int ListPair::rowOf(std::int64_t id) const {
    const std::string wanted = std::to_string(id);
    for (int row = 0; row < combos_(1).ListCount(); ++row)
        if (combos_(1).List(row) == wanted) return row;
    return -1;
}

void ListPair::choose(std::int64_t id) {
    const int row = rowOf(id);
    if (row < 0) return;
    combos_(0).setListIndex(row);
    combos_(1).setListIndex(row);
}

std::string ListPair::followChoice() {
    const int row = combos_(0).ListIndex();
    if (row < 1) return {};
    combos_(1).setListIndex(row);
    return combos_(1).Text();
}

std::int64_t ListPair::chosenId() const {
    const int row = combos_(0).ListIndex();
    return row > 0 ? Variant(combos_(1).List(row)).integer() : 0;
}

}  // namespace FendaMaestros
