#include "ui/CodedList.h"

#include "toolkit/ListTyping.h"
#include "toolkit/Text.h"

namespace FendaMaestros::codedList {

std::string item(std::string_view code, std::string_view name) {
    return std::string(code) + std::string(codeSeparator) + std::string(name);
}

std::string code(const ComboBox& combo, std::size_t characters) { return text::left(combo.Text(), characters); }

std::string codeOr(const ComboBox& combo, std::size_t characters, const std::string& unlisted) {
    return combo.ListIndex() < 0 ? unlisted : code(combo, characters);
}

int position(const ComboBox& combo, std::size_t characters, std::string_view code) {
    const auto start = [characters](std::string_view item) { return text::trimEnd(text::left(item, characters)); };
    const std::string wanted = start(code);
    if (wanted.empty()) return -1;
    for (int index = 0; index < combo.ListCount(); ++index)
        if (text::equalIgnoringCase(start(combo.List(index)), wanted)) return index;
    return -1;
}

}  // namespace FendaMaestros::codedList
