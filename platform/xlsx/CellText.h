#pragma once

#include <string>
#include <string_view>

namespace FendaMaestros {

/// Makes `cell` what a cell can hold of a text: its first 32,767 UTF-16 units, with blanks for control characters other
/// than line breaks and tabs, and U+FFFD for bytes that are no UTF-8.
void toCellText(std::string_view text, std::string& cell);

/// A sheet reads "_x0041_" as the character of that code. Writes what is to be read as it stands, cut after 32,767
/// characters.
void escapeCodes(std::string& cell);

}  // namespace FendaMaestros
