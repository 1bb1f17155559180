#pragma once

#include <string>

#include "app/Place.h"

namespace FendaMaestros {

/// `fenda revisar`: examines how the data are kept, and whether their rows belong together, and writes a line for each
/// fault: the company, or "datos comunes", a tab and a sentence. Changes nothing. An empty `company` stands for all.
/// A company that cannot be checked is said on standard error, and the next one follows. Returns 0 when nothing has
/// been found, 1 when something has, 2 when some company could not be checked. Throws std::exception, in Spanish.
int runRevisar(const Place& place, const std::string& company);

}  // namespace FendaMaestros
