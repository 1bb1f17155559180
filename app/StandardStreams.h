#pragma once

#include <cstddef>
#include <string_view>

/// Standard input and output without a buffer in between. Both throw std::runtime_error, in Spanish, when they fail.
namespace FendaMaestros {

/// Fills the buffer with up to `size` bytes, as they come; 0 at the end.
std::size_t readInput(char* buffer, std::size_t size);
/// Writes all of them. A reader that has gone ends the program, as it ends every filter.
void writeOutput(std::string_view bytes);

}  // namespace FendaMaestros
