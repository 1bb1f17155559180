#include "session/Literal.h"

#include "toolkit/Text.h"

namespace FendaMaestros {

std::string quoted(std::string_view text) { return "'" + text::replaced(text, "'", "''") + "'"; }

}  // namespace FendaMaestros
