#pragma once

#include <string>

#include "app/Place.h"
#include "renumbering/Renumbering.h"

namespace FendaMaestros {

/// What `fenda renumerar` was asked for, besides which of its three commands it was.
struct TypedRenumbering {
    std::string from, to;  ///< codes
    std::string digits;
    std::string identity;  ///< "desaparece" or "queda"; "" when it was not said
    std::string report;    ///< the file for the report; a CSV file when its name ends so
    bool outsidePlan = false;
    bool apply = false;
};

/// What the command `kind` ("cuenta", "digitos" or "fundir") asks for. Throws std::invalid_argument, in Spanish, when
/// something is missing or makes no sense.
RenumberingRequest renumberingRequest(const std::string& kind, const TypedRenumbering& typed);

/// `fenda renumerar`: tells what becomes of each code, counts, and what forbids it; with `apply` writes it, all or
/// nothing. Returns 0, or 1 when it is forbidden. Throws std::exception, in Spanish, when it cannot be done.
int runRenumerar(const Place& place, const std::string& company, const std::string& kind,
                 const TypedRenumbering& typed);

}  // namespace FendaMaestros
