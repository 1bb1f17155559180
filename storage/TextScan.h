#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace FendaMaestros::storage {

/// A literal of a text that reads: its place in the text, for texts the quotes left out.
struct Literal {
    enum class Kind : std::uint8_t { Integer, Real, Text, QuotedText };  ///< QuotedText: holds doubled quotes
    std::string_view source;
    Kind kind;
};

/// A text with its literals cut out: texts that differ in nothing else have the same shape, and run as one statement.
/// Numbers that are part of the statement (TOP 5, ORDER BY 2, VARCHAR(10)) stay in the shape.
struct Shape {
    std::string text;
    std::vector<Literal> literals;
};

/// The marks of literals in a shape; no text that reads contains them.
inline constexpr char numberMark = '\x01';
inline constexpr char textMark = '\x02';

/// Fills `shape` from a text that reads. Its literals point into `sql`. Throws ErrorBd (Refused) for comments and
/// control characters outside literals.
void scan(std::string_view sql, Shape& shape);

/// Whether a text begins as a read does: with SELECT or WITH.
bool beginsAsRead(std::string_view sql);

}  // namespace FendaMaestros::storage
