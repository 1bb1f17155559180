#pragma once

#include <string>

namespace FendaMaestros {

/// As verificarCif(), but with `bDatos` an identifier that the register of tax identities has as N.I.E. is accepted as
/// it stands, in capitals. Reads through InstanciaActual; errors of that read reach the caller.
bool FnVerificarCif(std::string& sValor, bool bDatos);

}  // namespace FendaMaestros
