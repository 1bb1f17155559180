#include "app/ChosenWord.h"

#include <algorithm>
#include <stdexcept>

#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

std::string enumerated(std::span<const std::string> words) {
    std::string all;
    for (std::size_t i = 0; i < words.size(); ++i)
        all += (i == 0 ? "" : i + 1 == words.size() ? " o " : ", ") + words[i];
    return all;
}

}  // namespace

std::size_t chosenWord(const std::string& what, const std::string& typed, std::span<const std::string> words) {
    const std::string wanted = text::folded(text::trim(typed));
    const auto found = std::ranges::find(words, wanted, [](const std::string& word) { return text::folded(word); });
    if (found != words.end()) return static_cast<std::size_t>(found - words.begin());
    throw std::invalid_argument(what + " debe ser " + enumerated(words) + ", y no «" + typed + "».");
}

}  // namespace FendaMaestros
