#include "app/CommandCopiar.h"

#include <stdexcept>
#include <vector>

#include "app/Composition.h"
#include "app/ProgressLine.h"
#include "app/StandardStreams.h"
#include "storage/CompanyCopy.h"

namespace FendaMaestros {

namespace {

/// The company that is meant; the only one, when no name was given.
std::string chosen(const Companies& companies, const Place& place, const std::string& name) {
    if (!name.empty()) return name;
    if (companies.list().size() > 1)
        throw std::invalid_argument("En " + nameOf(place) + " hay varias empresas: indique una con --empresa.");
    return firstCompany(companies, place);
}

std::string lineOf(const storage::CopiedTable& table) {
    std::string line = std::string(table.name) + ": " + std::to_string(table.copied) + " filas";
    if (table.alreadyThere > 0) line += ", y " + std::to_string(table.alreadyThere) + " que ya estaban";
    return line + "\n";
}

}  // namespace

int runCopiar(const Place& origin, const Place& goal, const std::string& company) {
    const auto from = companiesAt(origin), to = companiesAt(goal);
    const std::string name = chosen(*from, origin, company);
    const auto session = from->open(name);
    const bool first = !to->exists() || to->list().empty();
    std::vector<storage::CopiedTable> copied;
    {
        const ProgressLine progress;
        to->receive(name, [&](ConexionBd& empty) {
            copied = storage::copyCompany(
                *session->Conexion(), empty, first,
                [&progress](std::string_view table, std::int64_t rows) { progress.show(table, rows); });
        });
    }
    std::string report = "Se ha copiado la empresa «" + name + "» en " + nameOf(goal) + "\n";
    for (const auto& table : copied) report += lineOf(table);
    writeOutput(report);
    return 0;
}

}  // namespace FendaMaestros
