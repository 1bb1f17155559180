#pragma once

#include <string>

#include "app/Place.h"

namespace FendaMaestros {

/// `fenda restaurar`: takes all companies of a copy back to a place where there is nothing yet. Returns 0. Throws
/// std::exception, in Spanish; then the place is as it was.
int runRestaurar(const std::string& backup, const Place& place);

}  // namespace FendaMaestros
