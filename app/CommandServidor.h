#pragma once

#include "app/Place.h"

namespace FendaMaestros {

/// `fenda servidor preparar`: makes the server ready for companies, for whoever administers it; with `shown`, prints
/// the SQL that would be carried out and connects nowhere. Returns 0. Throws std::invalid_argument when no server is
/// named, and std::exception when it cannot be done; both in Spanish.
int runServidorPreparar(const TypedPlace& typed, bool shown);

}  // namespace FendaMaestros
