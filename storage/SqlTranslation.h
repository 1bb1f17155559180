#pragma once

#include <string>
#include <string_view>

namespace FendaMaestros::storage {

/// How an engine says what the texts of the screens say otherwise.
struct Dialect {
    /// The function that stands for isnull(a, b).
    std::string_view ifNull;
    /// What stands for + and joins two texts. Best an operator that refuses numbers: the walk knows no types of
    /// columns.
    std::string_view join;
    /// What goes behind each term of ORDER BY, before its direction; with the blank in front.
    std::string_view orderTerm;
    /// What stands for a value. `mark` is one of the marks of cut-out literals (TextScan.h), or '?' for a parameter of
    /// the text; `position` is its place among both, from 1.
    std::string (*parameter)(char mark, int position);
    /// What goes behind the direction of a term of ORDER BY, written or not; with the blank in front.
    std::string_view ascendingTerm = {};
    std::string_view descendingTerm = {};
    /// The last term of the ORDER BY of a whole text, for an engine that gives rows which nothing else orders in any
    /// order. A text without ORDER BY and TOP gets one of its groups, if it has any, and this.
    std::string_view lastTerm = {};
    /// Whether a word may stand in a text, and call something with the parenthesis behind it; null: every word may.
    bool (*admits)(std::string_view word, bool called) = nullptr;
};

struct Translation {
    std::string text;
    /// Of cut-out literals and parameters together.
    int parameters = 0;
};

/// Brings a text of the screens into an engine's dialect:
/// - KXComun.dbo.X is KXComun.X, dbo.X is X
/// - isnull( is the dialect's function, + joins texts and is the dialect's operator
/// - SELECT TOP n, also TOP (n), is SELECT ... LIMIT n at the end of that select
/// - N'x' is 'x'; CAST(x AS VARCHAR(n)) takes the first n characters (30 without n), CAST AS INT and FLOAT as they are
/// - [x] is "x"
/// - a number and the word glued to it are parted (8ORDER)
/// - the terms of ORDER BY, cut-out literals and parameters are as the dialect says
/// Literals that were not cut out stay. Throws ErrorBd (Refused) for what would give something else than it says (a
/// number or an aggregate beside +, other forms of TOP, other types of CAST), for a word that the dialect does not
/// admit, and for a text that goes on behind a semicolon.
Translation translate(std::string_view text, const Dialect& dialect);

}  // namespace FendaMaestros::storage
