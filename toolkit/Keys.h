#pragma once

namespace FendaMaestros {

/// Key codes as the screens compare them; letters and digits are their capital's ASCII code.
namespace key {
inline constexpr int Backspace = 8;
inline constexpr int Tab = 9;
inline constexpr int Enter = 13;
inline constexpr int Escape = 27;
inline constexpr int Space = 32;
inline constexpr int PageUp = 33;
inline constexpr int PageDown = 34;
inline constexpr int End = 35;
inline constexpr int Home = 36;
inline constexpr int Left = 37;
inline constexpr int Up = 38;
inline constexpr int Right = 39;
inline constexpr int Down = 40;
inline constexpr int Delete = 46;
inline constexpr int F1 = 112;
inline constexpr int Other = 229;  ///< any key without a code of its own

/// F1 to F12.
inline constexpr int F(int number) { return F1 + number - 1; }

/// The key that types a character: letters and digits have their own, the rest are Other.
inline constexpr int ofCharacter(char32_t character) {
    if (character >= U'a' && character <= U'z') return static_cast<int>(character) - ('a' - 'A');
    const bool own = (character >= U'0' && character <= U'9') || (character >= U'A' && character <= U'Z');
    return own || character == U' ' ? static_cast<int>(character) : Other;
}
}  // namespace key

/// Shift states, added up.
namespace shift {
inline constexpr int None = 0;
inline constexpr int Shift = 1;
inline constexpr int Control = 2;
inline constexpr int Alt = 4;
}  // namespace shift

struct KeyStroke {
    int code = 0;
    int shift = 0;

    bool operator==(const KeyStroke&) const = default;
};

}  // namespace FendaMaestros
