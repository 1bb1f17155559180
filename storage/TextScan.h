#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace FendaMaestros::storage {

/// A literal of a text that reads: its place in the text, for texts the quotes left out.
struct Literal {
    /// QuotedText: holds doubled quotes. A whole number that needs more than 64 bits is Real.
    enum class Kind : std::uint8_t { Integer, Real, Text, QuotedText };
    std::string_view source;
    Kind kind;
};

/// A text with its literals cut out: texts that differ in nothing else, literals of one kind for another of that kind,
/// have the same shape, and run as one statement. Numbers that are part of the statement (TOP 5, ORDER BY 2,
/// VARCHAR(10)) stay in the shape.
struct Shape {
    std::string text;
    std::vector<Literal> literals;
};

/// The marks of literals in a shape; no text that reads contains them.
inline constexpr char integerMark = '\x01';
inline constexpr char realMark = '\x02';
inline constexpr char textMark = '\x03';
inline constexpr bool isNumberMark(char c) { return c == integerMark || c == realMark; }
inline constexpr bool isMark(char c) { return isNumberMark(c) || c == textMark; }

/// Fills `shape` from a text that reads. Its literals point into `sql`. Throws ErrorBd (Refused) for comments,
/// marks of parameters and control characters outside literals.
void scan(std::string_view sql, Shape& shape);

/// Whether a text begins as a read does: with SELECT or WITH.
bool beginsAsRead(std::string_view sql);

}  // namespace FendaMaestros::storage
