#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace FendaMaestros {

/// "sí" or "no".
std::string yesOrNo(bool value);
/// What a person may write for them: sí or no, 1 or 0, true or false, verdadero or falso, case and accents aside.
/// Nothing for any other word.
std::optional<bool> readYesOrNo(std::string_view word);

}  // namespace FendaMaestros
