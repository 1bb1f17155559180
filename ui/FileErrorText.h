#pragma once

#include <string>
#include <system_error>

namespace FendaMaestros {

/// Why a file cannot be written, as a Spanish clause without full stop: "no queda sitio en el disco". An error that has
/// no clause of its own is told by its number.
std::string fileErrorText(std::error_code code);

}  // namespace FendaMaestros
