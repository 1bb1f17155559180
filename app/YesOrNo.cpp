#include "app/YesOrNo.h"

#include "toolkit/Text.h"

namespace FendaMaestros {

std::string yesOrNo(bool value) { return value ? "sí" : "no"; }

std::optional<bool> readYesOrNo(std::string_view word) {
    const std::string read = text::folded(word);
    if (read == "si" || read == "1" || read == "true" || read == "verdadero") return true;
    if (read == "no" || read == "0" || read == "false" || read == "falso") return false;
    return std::nullopt;
}

}  // namespace FendaMaestros
