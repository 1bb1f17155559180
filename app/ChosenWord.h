#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace FendaMaestros {

/// The position of the word that was typed, case and accents aside. Throws std::invalid_argument, in Spanish, for one
/// that is none of them; `what` begins its sentence, "El estado".
std::size_t chosenWord(const std::string& what, const std::string& typed, std::span<const std::string> words);

}  // namespace FendaMaestros
