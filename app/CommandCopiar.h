#pragma once

#include <string>

#include "app/Place.h"

namespace FendaMaestros {

/// `fenda copiar`: copies a company, with the shared data, to another place, which is made where it is missing, and
/// prints how many rows of each table. An empty `company` is the only one of the origin. At the goal there is the whole
/// company or nothing. Returns 0. Throws std::invalid_argument when no company is named and there are several, and
/// std::exception for what else goes wrong; both in Spanish.
int runCopiar(const Place& origin, const Place& goal, const std::string& company);

}  // namespace FendaMaestros
