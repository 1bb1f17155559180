#include "session/Literal.h"

#include "toolkit/Text.h"

namespace FendaMaestros {

std::string literal(std::string_view text) { return "'" + text::replaced(text, "'", "''") + "'"; }

}  // namespace FendaMaestros
