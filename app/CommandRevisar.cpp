#include "app/CommandRevisar.h"

#include <vector>

#include "app/Composition.h"
#include "app/StandardStreams.h"
#include "storage/Consistency.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

/// Writes what is found as it is found.
class Findings {
public:
    /// Who tells the faults of a company, or of the shared database when it is empty.
    Companies::Tell of(const std::string& company) {
        return [this, where = company.empty() ? "datos comunes" : text::printable(company)](const std::string& fault) {
            any_ = true;
            writeOutput(where + "\t" + text::printable(fault) + "\n");
        };
    }
    bool any() const { return any_; }

private:
    bool any_ = false;
};

void checkParameters(const ParametrosEmpresa& parameters, const Companies::Tell& tell) {
    try {
        requireUsable(parameters);
    } catch (const std::exception& error) {
        tell(error.what());
    }
}

}  // namespace

int runRevisar(const Place& place, const std::string& company) {
    const auto companies = companiesAt(place);
    const auto names = company.empty() ? companies->list() : std::vector<std::string>{company};
    Findings findings;
    const bool sharedIsWhole = companies->examine({}, findings.of({}));
    bool sharedIsChecked = false;
    for (const auto& name : names) {
        const bool whole = companies->examine(name, findings.of(name));
        if (!whole || !sharedIsWhole) continue;
        const auto session = companies->open(name);
        checkParameters(session->Parametros(), findings.of(name));
        if (!sharedIsChecked) storage::checkSharedRows(*session->Conexion(), findings.of({}));
        sharedIsChecked = true;
        storage::checkCompanyRows(*session->Conexion(), findings.of(name));
    }
    return findings.any() ? 1 : 0;
}

}  // namespace FendaMaestros
