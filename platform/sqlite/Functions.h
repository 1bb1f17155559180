#pragma once

struct sqlite3;

namespace FendaMaestros::sqlite {

/// Joins two texts: an operator of the engine that has a meaning of ours.
inline constexpr const char* joinOperator = "->";

/// What the texts of the screens call and the engine lacks or does otherwise:
/// - joinOperator: null when one of both is, an error when one is a number
/// - len(text): characters, blanks at the end not counted
/// - year(date): the year of a date written year-month-day or day/month/year, null for anything else
/// - like: capitals and small letters are the same, also ñ and letters with accents, in one character or in two
/// - sum, avg, total: exact to 1/10000 for amounts below 9E14; an average is the exact sum divided once
void registerFunctions(sqlite3* database);

}  // namespace FendaMaestros::sqlite
