#include "app/CommandRestaurar.h"

#include "app/Composition.h"
#include "app/StandardStreams.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

int runRestaurar(const std::string& backup, const Place& place) {
    const Backup restored = companiesAt(place)->restore(backup);
    std::string report = "Se ha recuperado en " + nameOf(place) + " la copia de seguridad " + backup + ", con:\n";
    for (const auto& company : restored.companies) report += "  " + text::printable(company) + "\n";
    writeOutput(report);
    return 0;
}

}  // namespace FendaMaestros
