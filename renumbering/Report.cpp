#include "renumbering/Report.h"

#include "storage/Parameters.h"
#include "toolkit/Format.h"
#include "toolkit/Text.h"
#include "ui/Csv.h"
#include "ui/PartialFile.h"

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
        csv += csvLine({change.from, change.to, shieldedText(change.name), std::to_string(change.lines), change.why});
    return csv;
}

void writeReport(const std::string& path, const RenumberingPlan& plan, const ParametrosEmpresa& company,
                 const Date& day, bool applied) {
    const std::string heading = storage::companyOf(company).name + ", " + day.text() + "\n" +
                                (applied ? "Se ha hecho:" : "Vista previa; no se ha escrito nada:") + "\n\n";
    PartialFile file(path);
    file.write(text::folded(path).ends_with(".csv") ? reportCsv(plan) : heading + reportText(plan));
    file.commit();
}

}  // namespace FendaMaestros
