#pragma once

#include <cstdint>
#include <string>

#include "session/Recordset.h"
#include "toolkit/Controls.h"

namespace FendaMaestros {

/// A selection list as two combo boxes of one array: element 0 shows the names, element 1 is hidden and holds the
/// identities as text, row for row. The first row means none, with identity "0".
class ListPair {
public:
    explicit ListPair(std::string name);

    ControlArray<ComboBox>& controls() { return combos_; }
    /// Fills both from the rows of a read and chooses the first row.
    void load(const std::string& none, Recordset& rows, const char* nameColumn, const char* idColumn);
    /// The shown list goes back to its first row.
    void chooseFirst() { combos_(0).setListIndex(0); }
    /// Chooses the first row with the identity, in both; without one the choice stays.
    void choose(std::int64_t id);
    /// The list has a row with the identity.
    bool has(std::int64_t id) const { return rowOf(id) >= 0; }
    /// The name shown; "" when none is chosen.
    std::string chosenName() const { return combos_(0).Text(); }
    /// The identity beside the name shown; 0 for the first row and when none is chosen.
    std::int64_t chosenId() const;
    /// The hidden list follows the shown one; its text, "" for the first row and when none is chosen.
    std::string followChoice();

private:
    /// The first row with the identity, -1 for none.
    int rowOf(std::int64_t id) const;

    ControlArray<ComboBox> combos_;
};

}  // namespace FendaMaestros
