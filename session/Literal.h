#pragma once

#include <string>
#include <string_view>

namespace FendaMaestros {

/// A text as a literal of a read or a condition: between quotes, its own quotes doubled.
std::string literal(std::string_view text);

}  // namespace FendaMaestros
