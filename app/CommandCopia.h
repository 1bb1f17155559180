#pragma once

#include <string>

#include "app/Place.h"
#include "session/Companies.h"

namespace FendaMaestros {

/// Copies all companies of a place with the shared data, as they are at one moment, into a new folder; gives the report
/// for the person, in lines. Throws std::exception, in Spanish; then there is no copy.
std::string backUp(const Companies& companies, const std::string& destination);

/// `fenda copia`: copies all companies of a place with the shared data, as they are at one moment, into a new folder,
/// and says how long others had to wait. Returns 0. Throws std::exception, in Spanish; then there is no copy.
int runCopia(const Place& place, const std::string& destination);

}  // namespace FendaMaestros
