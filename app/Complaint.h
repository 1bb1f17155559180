#pragma once

#include <string>

namespace FendaMaestros {

/// Says on standard error, behind what standard output has so far, why something cannot be done or what else a person
/// should know; gives `status`. Control characters and bytes that are no UTF-8 are shown by their code.
int complain(const std::string& sentence, int status);

}  // namespace FendaMaestros
