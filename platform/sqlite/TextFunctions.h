#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// What texts of the screens ask of a text, on bytes in UTF-8. For their comparison see Collation.h.
namespace FendaMaestros::sqlite {

/// Characters, blanks at the end not counted.
std::int64_t lengthOf(std::string_view text);

/// The year of a date written year-month-day or day/month/year, nothing for anything else.
std::optional<int> yearOf(std::string_view text);

/// Whether a text is like a pattern: % stands for anything, _ for one character. Capitals and small letters are the
/// same, also ñ and letters with accents, in one character or in two. `escape`, one character or "" for none, takes its
/// meaning from the one behind it.
bool isLike(std::string_view text, std::string_view pattern, std::string_view escape = {});

}  // namespace FendaMaestros::sqlite
