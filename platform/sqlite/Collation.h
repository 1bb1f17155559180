#pragma once

#include <string>
#include <string_view>

struct sqlite3;

namespace FendaMaestros::sqlite {

/// The order of Spanish texts: capitals and small letters are the same, accents count, ñ comes after n, blanks at the
/// end do not count. Negative, 0 or positive.
int compareSpanish(std::string_view a, std::string_view b);

/// The version of the library's order for a language. Throws ErrorBd when the library has none of its own for it.
std::string orderVersion(const char* language = "es");

/// Makes the order known to a connection as the collation ES.
void registerCollation(sqlite3* database);

}  // namespace FendaMaestros::sqlite
