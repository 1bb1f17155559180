#include "toolkit/ListTyping.h"

#include <algorithm>

#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

/// From `first` on and round to it; -1 for none.
template <class Predicate>
int firstItem(const ComboBox& list, int first, Predicate&& begins) {
    for (int step = 0; step < list.ListCount(); ++step) {
        const int index = (first + step) % list.ListCount();
        if (begins(text::folded(list.List(index)))) return index;
    }
    return -1;
}

int beginningWith(const ComboBox& list, int first, std::string_view typed) {
    const int byCode = firstItem(list, first, [&](const std::string& item) { return item.starts_with(typed); });
    if (byCode >= 0) return byCode;
    return firstItem(list, first, [&](const std::string& item) {
        const auto code = item.find(codeSeparator);
        return code != std::string::npos && item.substr(code + codeSeparator.size()).starts_with(typed);
    });
}

}  // namespace

int ListTyping::next(const ComboBox& list, int current, char32_t character) {
    std::string letter;
    text::append(letter, character);
    letter = text::folded(letter);
    const auto now = desktop_.now();
    if (&list != list_ || current != reached_ || now - last_ >= pause) typed_.clear();
    list_ = &list;
    last_ = now;

    const bool goesOn = !typed_.empty();
    typed_ += letter;
    int found = beginningWith(list, goesOn ? std::max(current, 0) : current + 1, typed_);
    const bool onlyThis = text::replaced(typed_, letter, "").empty();
    if (found < 0 && goesOn && onlyThis) found = beginningWith(list, current + 1, letter);
    reached_ = found >= 0 ? found : current;
    return found;
}

}  // namespace FendaMaestros
