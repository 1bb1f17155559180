#include "toolkit/ListTyping.h"

#include <algorithm>
#include <functional>

#include "toolkit/Text.h"

namespace FendaMaestros {

/// What is typed is compared with the beginnings of their texts; a first text that begins so, of whichever item, comes
/// before the second ones.
struct ListTyping::Items {
    const Control& list;
    int count = 0;
    int texts = 0;
    /// The n-th text of an item, or its first characters, as many as asked for.
    std::function<std::string(int item, int nth, std::size_t characters)> text;
    /// A text of two or more characters that is typed whole comes before one that only begins so: Calle before
    /// Callejón.
    bool wholeFirst = false;

    /// From item `first` on and round to it; -1 for none.
    int beginningWith(const std::string& typed, int first) const {
        const std::size_t characters = text::length(typed);
        const bool preferWhole = wholeFirst && characters > 1;
        for (int nth = 0; nth < texts; ++nth) {
            int found = -1;
            for (int step = 0; step < count; ++step) {
                const int item = (first + step) % count;
                const std::string folded = text::folded(text(item, nth, characters));
                if (preferWhole && folded == typed) return item;
                if (found < 0 && folded.starts_with(typed)) found = item;
                if (found >= 0 && !preferWhole) break;
            }
            if (found >= 0) return found;
        }
        return -1;
    }
};

int ListTyping::next(const ComboBox& list, int current, char32_t character) {
    const auto text = [&list](int item, int nth, std::size_t) {
        const std::string& whole = list.List(item);
        if (nth == 0) return whole;
        const auto code = whole.find(codeSeparator);
        return code == std::string::npos ? std::string() : whole.substr(code + codeSeparator.size());
    };
    return next({list, list.ListCount(), 2, text, true}, current, character);
}

int ListTyping::next(const Table& table, int current, char32_t character) {
    std::vector<int> visible;
    for (int column = 0; column < table.columnCount(); ++column)
        if (table.column(column).Visible) visible.push_back(column);
    const auto text = [&](int row, int nth, std::size_t characters) {
        return text::left(table.cellText(row, visible[static_cast<std::size_t>(nth)]), characters);
    };
    return next({table, table.rowCount(), static_cast<int>(visible.size()), text}, current, character);
}

int ListTyping::next(const Items& items, int current, char32_t character) {
    std::string letter;
    text::append(letter, character);
    letter = text::folded(letter);
    const auto now = desktop_.now();
    if (&items.list != list_ || current != reached_ || now - last_ >= pause) typed_.clear();
    list_ = &items.list;
    last_ = now;

    const bool goesOn = !typed_.empty();
    typed_ += letter;
    int found = items.beginningWith(typed_, goesOn ? std::max(current, 0) : current + 1);
    const bool onlyThis = text::replaced(typed_, letter, "").empty();
    if (found < 0 && goesOn && onlyThis) found = items.beginningWith(letter, current + 1);
    reached_ = found >= 0 ? found : current;
    return found;
}

}  // namespace FendaMaestros
