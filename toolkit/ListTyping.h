#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "toolkit/Controls.h"
#include "toolkit/Desktop.h"

namespace FendaMaestros {

/// Stands between code and name in the items of a list that has both.
inline constexpr std::string_view codeSeparator = " - ";

/// What a person types on a list or a table to get at an item. Characters less than a pause apart belong together,
/// unless another list or another item has been chosen in between.
class ListTyping {
public:
    static constexpr std::chrono::seconds pause{1};

    /// By the clock of `desktop`, which must outlive it.
    explicit ListTyping(const Desktop& desktop) : desktop_(desktop) {}

    /// The item that a further character leads to, with `current` (-1 for none) chosen now; -1 when none begins so. An
    /// item begins with its code or, behind " - ", with its name, and has it whole sooner than more of it; case and
    /// accents do not count. One character again and again goes from each item that begins with it to the next.
    int next(const ComboBox& list, int current, char32_t character);
    /// The same for the rows of a table: the first of its visible columns that has such a row counts.
    int next(const Table& table, int current, char32_t character);

private:
    struct Items;
    int next(const Items& items, int current, char32_t character);

    const Desktop& desktop_;
    std::string typed_;
    const Control* list_ = nullptr;
    int reached_ = -1;
    Desktop::Time last_;
};

}  // namespace FendaMaestros
