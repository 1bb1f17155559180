#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// UTF-8 texts counted, cut and folded by character (Unicode code point). Bytes that are no UTF-8 count one each.
namespace FendaMaestros::text {

std::size_t length(std::string_view utf8);
/// The first `characters` characters.
std::string left(std::string_view utf8, std::size_t characters);
/// Without the blanks, tabs and line ends around it.
std::string trim(std::string_view utf8);
std::string trimEnd(std::string_view utf8);
/// Capitals of Latin letters, those with accents and ñ included.
std::string upper(std::string_view utf8);
/// What a search compares: small Latin letters without their accents (ñ counts as n).
std::string folded(std::string_view utf8);
/// Appends folded(utf8), which is never longer than utf8.
void appendFolded(std::string& to, std::string_view utf8);
/// Appends one character.
void append(std::string& utf8, char32_t character);
/// The characters of a text.
std::u32string characters(std::string_view utf8);
/// Whether every byte belongs to a character that UTF-8 admits.
bool isUtf8(std::string_view bytes);
/// Characters that are never shown: those below a blank, U+007F to U+009F, and the separators of lines and paragraphs.
bool isControl(char32_t character);
/// The text as it stands in one row: a blank for each control.
std::string printable(std::string_view utf8);
/// The digits 0 to 9.
constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
/// A text that comes from elsewhere, for a field of one line: the line breaks and other controls at its ends go, a run
/// of them inside becomes a blank.
std::u32string oneLine(const std::u32string& pasted);
/// True for one or more digits 0 to 9 and nothing else.
bool isNumericCode(std::string_view utf8);
/// ASCII letters alone: "Á" and "á" differ.
bool equalIgnoringCase(std::string_view a, std::string_view b);
/// All occurrences of `what` replaced by `by`; `what` must not be empty.
std::string replaced(std::string_view utf8, std::string_view what, std::string_view by);

}  // namespace FendaMaestros::text
