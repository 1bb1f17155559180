#pragma once

#include <string>

namespace FendaMaestros {

/// The name of a tax identity as SQL: its parts that are not empty, each with a blank behind it, the surnames first
/// unless the company parameter `PAR_ORCONTANOM` is 0. The parameter is read at each call through InstanciaActual.
std::string expresionNombre();

/// The same expression as the column `Nombre` of a read.
std::string fnExpresionNombre();

}  // namespace FendaMaestros
