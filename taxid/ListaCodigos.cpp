#include "taxid/ListaCodigos.h"

#include "toolkit/Text.h"

namespace FendaMaestros::lista {

namespace {

constexpr std::string_view separator = " - ";

}  // namespace

std::string elemento(std::string_view code, std::string_view name) {
    return std::string(code) + std::string(separator) + std::string(name);
}

std::string codigo(const ComboBox& combo, std::size_t characters) { return text::left(combo.Text(), characters); }

int posicion(const ComboBox& combo, std::size_t characters, std::string_view code) {
    const auto start = [characters](std::string_view item) { return text::trimEnd(text::left(item, characters)); };
    const std::string wanted = start(code);
    if (wanted.empty()) return -1;
    for (int index = 0; index < combo.ListCount(); ++index)
        if (text::equalIgnoringCase(start(combo.List(index)), wanted)) return index;
    return -1;
}

}  // namespace FendaMaestros::lista
