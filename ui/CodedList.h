#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "toolkit/Controls.h"

/// Combo boxes whose items are a code, " - " and a name.
namespace FendaMaestros::codedList {

/// The item made of a code and its name.
std::string item(std::string_view code, std::string_view name);

/// The first `characters` characters of the chosen item; "" when none is chosen.
std::string code(const ComboBox& combo, std::size_t characters);
/// The same; `unlisted` when none is chosen.
std::string codeOr(const ComboBox& combo, std::size_t characters, const std::string& unlisted);

/// The position of the first item whose first `characters` characters are those of `code`, trailing blanks and case
/// apart; -1 when there is none or `code` is blank.
int position(const ComboBox& combo, std::size_t characters, std::string_view code);

}  // namespace FendaMaestros::codedList
