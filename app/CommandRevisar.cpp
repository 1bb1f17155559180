#include "app/CommandRevisar.h"

#include <vector>

#include "app/Complaint.h"
#include "app/Composition.h"
#include "app/Examination.h"
#include "app/StandardStreams.h"

namespace FendaMaestros {

namespace {

constexpr int cannotCheck = 2;

}  // namespace

int runRevisar(const Place& place, const std::string& company) {
    const auto companies = companiesAt(place);
    Examination examination(*companies, [](const std::string& where, const std::string& fault) {
        writeOutput(where + "\t" + fault + "\n");
    });
    const auto names = company.empty() ? companies->list() : std::vector<std::string>{company};
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
