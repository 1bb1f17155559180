#pragma once

#include <string>
#include <string_view>

namespace FendaMaestros::sqlite {

/// Brings a text of the screens into the engine's dialect:
/// - KXComun.dbo.X is KXComun.X, dbo.X is X
/// - isnull( is ifnull(, + joins texts and is ||
/// - SELECT TOP n is SELECT ... LIMIT n at the end of that select
/// - a number and the word glued to it are parted (8ORDER)
/// - the terms of ORDER BY compare by the collation ES, results of expressions included
/// - marks of cut-out literals (TextScan.h) are parameters; texts compare by ES also with results of expressions
/// Texts already bound by "?" keep their parameters and their literals.
std::string translate(std::string_view text);

}  // namespace FendaMaestros::sqlite
