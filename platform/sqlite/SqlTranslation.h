#pragma once

#include <string>
#include <string_view>

namespace FendaMaestros::sqlite {

/// Brings a text of the screens into the engine's dialect (storage/SqlTranslation.h). The terms of ORDER BY and cut-out
/// texts compare by the collation ES, also with results of expressions.
std::string translate(std::string_view text);

/// The same for a text whose literals have not been cut out, for a connection of somebody else's: they stay where they
/// are. Throws as storage::scan() and storage::translate(), and ErrorBd (Refused) for what neither reads nor writes
/// rows.
std::string translateWithLiterals(std::string_view text);

}  // namespace FendaMaestros::sqlite
