#pragma once

#include <string>

namespace FendaMaestros {

/// The town that the register of tax identities has for a country (its code of three characters) and a postal code,
/// taken from any entry that has both; "" when there is none. Reads through InstanciaActual.
std::string FnBuscaPoblacion(const std::string& PAIS, const std::string& Cpostal);

}  // namespace FendaMaestros
