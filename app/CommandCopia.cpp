#include "app/CommandCopia.h"

#include "app/Composition.h"
#include "app/StandardStreams.h"
#include "toolkit/Format.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

std::string backUp(const Companies& companies, const std::string& destination) {
    const Backup backup = companies.backUp(destination);
    const double seconds = std::chrono::duration<double>(backup.heldUp).count();
    std::string report = "Copia de seguridad hecha y revisada en " + destination + ", con los datos comunes y:\n";
    for (const auto& company : backup.companies) report += "  " + text::printable(company) + "\n";
    report += "Mientras se hacía, los demás han podido leer, y para guardar han esperado como mucho " +
              format(seconds, "0.00") + " s.\n";
    return report;
}

int runCopia(const Place& place, const std::string& destination) {
    writeOutput(backUp(*companiesAt(place), destination));
    return 0;
}

}  // namespace FendaMaestros
