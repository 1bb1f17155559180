#pragma once

#include <string>

#include "renumbering/Renumbering.h"
#include "toolkit/Desktop.h"

namespace FendaMaestros {

/// A plan in words: each code with what becomes of it, the counts, what else to know and what forbids it.
std::string reportText(const RenumberingPlan& plan);

/// Its codes as a CSV file (ui/Csv.h).
std::string reportCsv(const RenumberingPlan& plan);

/// The counts in one line: "12 subcuentas, 345 apuntes."
std::string countsText(const RenumberingPlan& plan);

/// Writes what was shown or done (`applied`) on a day to a file, whole or not at all: as a CSV file when its name ends
/// in
/// ".csv", else in words under a heading with the company. Throws std::runtime_error, in Spanish.
void writeReport(const std::string& path, const RenumberingPlan& plan, const ParametrosEmpresa& company,
                 const Date& day, bool applied);

}  // namespace FendaMaestros
