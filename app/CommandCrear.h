#pragma once

#include "app/Place.h"
#include "session/Companies.h"

namespace FendaMaestros {

/// `fenda crear`: makes the company, and the place with it when it is a folder that is not there, and says where.
/// Returns 0. Throws std::invalid_argument for one that makes no sense, and what else goes wrong as other
/// std::exception; both in Spanish.
int runCrear(const Place& place, const TypedCompany& typed);

}  // namespace FendaMaestros
