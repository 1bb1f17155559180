#include "app/CommandRenumerar.h"

#include <array>
#include <stdexcept>

#include "app/ChosenWord.h"
#include "app/Complaint.h"
#include "app/ListingOutput.h"
#include "app/ProgressLine.h"
#include "app/StandardStreams.h"
#include "app/UnattendedCompany.h"
#include "renumbering/Report.h"
#include "toolkit/Text.h"
#include "ui/PartialFile.h"
#include "ui/Transaction.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

constexpr int forbidden = 1;

AccountsToMerge::Identity identityOf(const std::string& typed) {
    using Identity = AccountsToMerge::Identity;
    static const std::array<std::string, 2> words{"desaparece", "queda"};
    if (typed.empty()) return Identity::Unsaid;
    return chosenWord("La identidad", typed, words) == 0 ? Identity::OfFirst : Identity::OfSecond;
}

int digitsOf(const std::string& typed) {
    constexpr std::size_t most = 3;
    if (!text::isNumericCode(typed) || typed.size() > most)
        throw std::invalid_argument("Los dígitos deben ser un número, y no «" + typed + "».");
    return std::stoi(typed);
}

void applyTo(UnattendedCompany& open, const RenumberingRequest& request, const RenumberingPlan& plan) {
    const ProgressLine line;
    withPatience(open.desktop(), [&] {
        applyRenumbering(instanciaActual().sesion(), request, plan, [&line](std::int64_t done, std::int64_t) {
            line.show("Filas escritas", done);
            return true;
        });
    });
}

}  // namespace

RenumberingRequest renumberingRequest(const std::string& kind, const TypedRenumbering& typed) {
    if (kind == "digitos") {
        if (typed.digits.empty()) throw std::invalid_argument("Falta el número de dígitos.");
        return DigitsToChange{digitsOf(typed.digits)};
    }
    if (typed.from.empty()) throw std::invalid_argument("Falta la subcuenta.");
    if (kind == "fundir") {
        if (typed.to.empty()) throw std::invalid_argument("Falta la subcuenta que queda.");
        return AccountsToMerge{typed.from, typed.to, identityOf(typed.identity)};
    }
    if (typed.to.empty()) throw std::invalid_argument("Falta el código nuevo.");
    return AccountToRenumber{typed.from, typed.to, typed.outsidePlan};
}

int runRenumerar(const Place& place, const std::string& company, const std::string& kind,
                 const TypedRenumbering& typed) {
    const RenumberingRequest request = renumberingRequest(kind, typed);
    UnattendedCompany open(place, company);
    SesionBd& session = instanciaActual().sesion();
    const RenumberingPlan plan = planRenumbering(session, request);
    writeOutput(reportText(plan) + "\n");
    const bool applied = typed.apply && plan.allowed();
    if (applied) {
        // What cannot be written is told before anything is changed.
        if (!typed.report.empty()) static_cast<void>(PartialFile(typed.report));
        applyTo(open, request, plan);
        writeOutput("Se ha hecho.\n");
    }
    if (!typed.report.empty()) {
        writeReport(typed.report, plan, session.Parametros(), open.desktop().today(), applied);
        tellWritten(typed.report);
    }
    if (!plan.allowed()) return complain("No se ha escrito nada.", forbidden);
    if (!applied) writeOutput("No se ha escrito nada; con --aplicar se hace.\n");
    return 0;
}

}  // namespace FendaMaestros
