#include "app/CommandRevisar.h"

#include <vector>

#include "app/Complaint.h"
#include "app/Composition.h"
#include "app/StandardStreams.h"
#include "storage/Consistency.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

constexpr int cannotCheck = 2;

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

/// Checks company after company, and the shared rows with the first one that opens.
class Examination {
public:
    explicit Examination(const Place& place) : companies_(companiesAt(place)) {}

    std::vector<std::string> names() const { return companies_->list(); }
    void checkShared() { sharedIsWhole_ = companies_->examine({}, findings_.of({})); }
    void check(const std::string& name) {
        if (!companies_->examine(name, findings_.of(name)) || !sharedIsWhole_) return;
        const auto session = companies_->open(name);
        checkParameters(session->Parametros(), findings_.of(name));
        if (!sharedIsChecked_) storage::checkSharedRows(*session->Conexion(), findings_.of({}));
        sharedIsChecked_ = true;
        storage::checkCompanyRows(*session->Conexion(), findings_.of(name));
    }
    bool hasFound() const { return findings_.any(); }

private:
    std::unique_ptr<Companies> companies_;
    Findings findings_;
    bool sharedIsWhole_ = false;
    bool sharedIsChecked_ = false;
};

}  // namespace

int runRevisar(const Place& place, const std::string& company) {
    Examination examination(place);
    const auto names = company.empty() ? examination.names() : std::vector<std::string>{company};
    examination.checkShared();
    bool failed = false;
    for (const auto& name : names) {
        try {
            examination.check(name);
        } catch (const std::exception& error) {
            failed = true;
            complain(error.what(), cannotCheck);
        }
    }
    if (failed) return cannotCheck;
    return examination.hasFound() ? 1 : 0;
}

}  // namespace FendaMaestros
