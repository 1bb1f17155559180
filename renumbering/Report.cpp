#include "renumbering/Report.h"

#include "toolkit/Format.h"
#include "toolkit/Text.h"
#include "ui/Csv.h"

namespace FendaMaestros {

namespace {

std::string lineOf(const CodeChange& change) {
    std::string line = change.from + (change.to.empty() ? "" : " → " + change.to);
    if (!change.name.empty()) line += "  " + change.name;
    if (change.lines > 0) line += " (" + counted(static_cast<int>(change.lines), "apunte", "apuntes") + ")";
    if (!change.why.empty()) line += ": " + change.why;
    return text::printable(line) + "\n";
}

}  // namespace

std::string countsText(const RenumberingPlan& plan) {
    std::string counts;
    for (const RowCount& count : plan.counts)
        if (count.rows > 0) counts += (counts.empty() ? "" : ", ") + count.words;
    return counts.empty() ? "" : "Cambian: " + counts + ".";
}

std::string reportText(const RenumberingPlan& plan) {
    std::string report = plan.title + "\n\n";
    for (const CodeChange& change : plan.codes) report += lineOf(change);
    if (!plan.codes.empty()) report += "\n";
    if (const std::string counts = countsText(plan); !counts.empty()) report += counts + "\n";
    for (const std::string& note : plan.notes) report += note + "\n";
    for (const std::string& obstacle : plan.obstacles) report += "No se puede: " + obstacle + "\n";
    return report;
}

std::string reportCsv(const RenumberingPlan& plan) {
    std::string csv = csvLine({"Código", "Código nuevo", "Nombre", "Apuntes", "Lo impide"});
    for (const CodeChange& change : plan.codes)
        csv += csvLine({change.from, change.to, change.name, std::to_string(change.lines), change.why});
    return csv;
}

}  // namespace FendaMaestros
