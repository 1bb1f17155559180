#pragma once

#include <string>
#include <string_view>

namespace FendaMaestros::storage {

/// How an engine says what the texts of the screens say otherwise.
struct Dialect {
    /// The function that stands for isnull(a, b).
    std::string_view ifNull;
    /// What goes behind each term of ORDER BY, before its direction; with the blank in front.
    std::string_view orderTerm;
    /// What stands for a value. `mark` is one of the marks of cut-out literals (TextScan.h), or '?' for a parameter of
    /// the text; `position` is its place among both, from 1.
    std::string (*parameter)(char mark, int position);
};

/// Brings a text of the screens into an engine's dialect:
/// - KXComun.dbo.X is KXComun.X, dbo.X is X
/// - isnull( is the dialect's function, + joins texts and is ||
/// - SELECT TOP n is SELECT ... LIMIT n at the end of that select
/// - a number and the word glued to it are parted (8ORDER)
/// - the terms of ORDER BY, cut-out literals and parameters are as the dialect says
/// Literals that were not cut out stay.
std::string translate(std::string_view text, const Dialect& dialect);

}  // namespace FendaMaestros::storage
