#pragma once

#include <array>
#include <cstdint>

namespace FendaMaestros::storage {

enum class CharacterClass : std::uint8_t { Other, Word, Digit, Blank, Control };

/// Classes of the bytes of a text: letters, underscore and bytes beyond ASCII make words, digits go on a word.
inline constexpr std::array<CharacterClass, 256> characterClasses = [] {
    std::array<CharacterClass, 256> classes{};
    for (int c = 0; c < 256; ++c) {
        auto& target = classes[static_cast<std::size_t>(c)];
        if (c >= '0' && c <= '9')
            target = CharacterClass::Digit;
        else if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c >= 128)
            target = CharacterClass::Word;
        else if (c == ' ' || c == '\t' || c == '\r' || c == '\n')
            target = CharacterClass::Blank;
        else if (c < 32 || c == 127)
            target = CharacterClass::Control;
    }
    return classes;
}();

inline CharacterClass classOf(char c) { return characterClasses[static_cast<unsigned char>(c)]; }
inline bool isWordByte(char c) { return classOf(c) == CharacterClass::Word || classOf(c) == CharacterClass::Digit; }
inline bool isBlank(char c) { return classOf(c) == CharacterClass::Blank; }
inline bool isDigit(char c) { return classOf(c) == CharacterClass::Digit; }

}  // namespace FendaMaestros::storage
