#pragma once

#include <string>

#include "app/ListingOutput.h"
#include "app/Place.h"

namespace FendaMaestros {

/// `fenda identidades`: the register of tax identities as its screen lists it. `order` is a column of it, the name when
/// empty. Returns 0. Throws std::exception, in Spanish.
int runIdentidades(const Place& place, const std::string& company, const std::string& order, bool descending,
                   const ListingOutput& output);

}  // namespace FendaMaestros
