#pragma once

struct sqlite3;

namespace FendaMaestros::sqlite {

/// What the texts of the screens call and the engine lacks or does otherwise:
/// - len(text): characters, blanks at the end not counted
/// - year(date): the year of a date written year-month-day, null for anything else
/// - like: capitals and small letters are the same, also ñ and letters with accents
/// - sum: exact to 1/10000 for amounts below 9E14
void registerFunctions(sqlite3* database);

}  // namespace FendaMaestros::sqlite
