#include "app/CommandVerificar.h"

#include <vector>

#include "app/ListingTexts.h"
#include "app/StandardStreams.h"
#include "app/UnattendedCompany.h"
#include "chartreports/VerificacionPlan.h"
#include "toolkit/Text.h"
#include "ui/SessionAccess.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

/// The official plan that the check goes by.
constexpr const char* plan = "2008";
constexpr int generalSection = 1;

/// The accounts that a check has found, as lines and as JSON objects.
struct Findings {
    std::string lines;
    std::string objects;

    void add(const std::string& code, const std::string& description, const std::string& wrong,
             const std::string& members) {
        lines += text::printable(code) + "\t" + text::printable(description) + "\t" + wrong + "\n";
        objects += (objects.empty() ? "\n" : ",\n");
        objects += "{\"cuenta\":" + jsonString(code) + ",\"descripcion\":" + jsonString(description) + members + "}";
    }
};

Findings outsideThePlan() {
    Findings found;
    for (const auto accounts = read(sqlSubcuentasActivas()); !accounts->Eof(); accounts->MoveNext()) {
        const std::string code = accounts->Fields("pcta_cta").Value.text();
        if (perteneceAlPlan(plan, generalSection, code)) continue;
        found.add(code, accounts->Fields("PCta_Des").Value.text(), "fuera del plan", "");
    }
    return found;
}

Findings wrongSubaccounts() {
    const std::string digits = instanciaActual().sesion().Parametros().Item("Par_CtaNum").Value.text();
    Findings found;
    for (const SubcuentaErronea& account : subcuentasErroneas(*read(sqlSubcuentasErroneas(digits))))
        found.add(account.codigo, account.descripcion,
                  std::string("código repetido o de otra longitud, ") + (account.conDiario ? "con" : "sin") + " diario",
                  std::string(",\"diario\":") + (account.conDiario ? "true" : "false"));
    return found;
}

}  // namespace

int runVerificar(const Place& place, const std::string& company, const VerificarOptions& options) {
    const UnattendedCompany open(place, company);
    const bool both = options.plan == options.subaccounts;
    std::string lines, members;
    const auto check = [&](const char* name, const Findings& found) {
        lines += found.lines;
        members += (members.empty() ? "" : ",\n") + jsonString(name) + ":[" + found.objects + "]";
    };
    if (both || options.plan) check("plan", outsideThePlan());
    if (both || options.subaccounts) check("subcuentas", wrongSubaccounts());
    writeOutput(options.json ? "{" + members + "}\n" : lines);
    return lines.empty() ? 0 : 1;
}

}  // namespace FendaMaestros
