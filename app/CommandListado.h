#pragma once

#include <string>

#include "app/ListingOutput.h"
#include "app/Place.h"

namespace FendaMaestros {

/// The chart listing as a person asks for it; a blank text filters nothing.
struct TypedListado {
    std::string kind = "subcuentas";
    std::string from, to;  ///< codes, completed as on the screen
    std::string name;
    bool anywhere = false;
    std::string department, centre;  ///< code or name
    std::string state = "activas";
    std::string fromBalance, toBalance;
    bool withBalance = false;
    std::string order;  ///< the caption of a column; empty for the order that the screen begins with
    bool descending = false;
};

/// `fenda listado`: the rows that the screen shows for the same filters. Returns 0. Throws std::exception, in Spanish.
int runListado(const Place& place, const std::string& company, const TypedListado& typed, const ListingOutput& output);

}  // namespace FendaMaestros
