#pragma once

#include <string>

#include "renumbering/Renumbering.h"

namespace FendaMaestros {

/// A plan in words: each code with what becomes of it, the counts, what else to know and what forbids it.
std::string reportText(const RenumberingPlan& plan);

/// Its codes as a CSV file (ui/Csv.h).
std::string reportCsv(const RenumberingPlan& plan);

/// The counts in one line: "12 subcuentas, 345 apuntes."
std::string countsText(const RenumberingPlan& plan);

}  // namespace FendaMaestros
