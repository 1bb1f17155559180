#include "chart/CodigosCuenta.h"
#include "renumbering/Planning.h"
#include "session/Literal.h"
#include "toolkit/Text.h"

/// One sub-account gets another code.
namespace FendaMaestros {

namespace {

/// The code that a person has typed; "" when it makes no sense, which the plan is told.
std::string wantedCode(const CompanyCodes& company, const std::string& typed, RenumberingPlan& plan) {
    std::string code = text::trim(typed);
    const auto refuse = [&plan](std::string sentence) {
        plan.obstacles.push_back(std::move(sentence));
        return std::string();
    };
    if (code.empty()) return refuse("Falta el código nuevo.");
    if (asksForNextCode(code)) {
        const std::string prefix = code.substr(0, code.size() - 1);
        const NextCode next =
            nextCode(company.connection.Execute(highestCodeSql(prefix))->cell(0, 0), prefix, company.digits);
        if (!next.refusal.empty()) return refuse("No se puede calcular el código que sigue a los de «" + prefix + "».");
        code = next.code;
    }
    code = completedCode(code, company.digits);
    if (!text::isNumericCode(code)) return refuse("«" + code + "» no es un código de cuenta.");
    if (code.size() != company.digits)
        return refuse("El código " + code + " tiene " + std::to_string(code.size()) +
                      " cifras, y las subcuentas de la empresa " + std::to_string(company.digits) + ".");
    return code;
}

/// Rows that name a code which no account has would name the account that gets it.
void requireUnused(const CompanyCodes& company, const std::string& code, RenumberingPlan& plan) {
    const auto rows =
        company.connection.Execute("SELECT * FROM PCta WHERE PCta_Cta = " + literal(code) + " ORDER BY PCta_Id");
    if (!rows->Eof()) {
        const bool subaccount = rows->Fields("PCta_Subcuenta").Value.integer() == 1;
        plan.obstacles.push_back("El código " + code + " lo tiene ya la " +
                                 (subaccount ? "subcuenta «" : "cuenta del plan oficial «") +
                                 text::trim(rows->Fields("PCta_Des").Value.text()) + "».");
        return;
    }
    for (const CodePlace& place : codeReferences)
        if (const std::int64_t naming = company.rowsWith(place, place.code, code); naming > 0)
            plan.obstacles.push_back("Hay " + counted(place, naming) + " con el código " + code +
                                     ", que no tiene ninguna subcuenta, y esta se los quedaría.");
}

void requireRules(const CompanyCodes& company, const SubcuentaRecord& account, const std::string& code,
                  bool outsidePlan, RenumberingPlan& plan) {
    const std::string before = company.official.groupOf(account.codigo), after = company.official.groupOf(code);
    if (after.empty() && !outsidePlan)
        plan.obstacles.push_back("El código " + code + " no pertenece al PGC " +
                                 std::to_string(planEnVigor(company.fiscalYear)) + ".");
    if (needsIdentity(code) && account.idNif == 0)
        plan.obstacles.push_back("Las subcuentas del grupo " + code.substr(0, 3) +
                                 " llevan identidad fiscal, y esta no la tiene.");
    if (before != after && !after.empty())
        plan.notes.push_back("Pasa a colgar de la cuenta " + after + " del plan oficial" +
                             (before.empty() ? "." : ", y no de la " + before + "."));
}

}  // namespace

RenumberingPlan planOf(const CompanyCodes& company, const AccountToRenumber& wanted) {
    RenumberingPlan plan{.title = "Cambiar el código de una subcuenta"};
    const auto account = company.account(wanted.from, plan);
    const std::string code = wantedCode(company, wanted.to, plan);
    if (!account || code.empty()) return plan;
    plan.title = "Subcuenta " + account->codigo + " a " + code;
    if (code == account->codigo) {
        plan.obstacles.push_back("La subcuenta ya tiene el código " + code + ".");
        return plan;
    }
    requireUnused(company, code, plan);
    requireRules(company, *account, code, wanted.outsidePlan, plan);

    const auto change = [&](const CodePlace& place) {
        const std::int64_t rows = company.rowsWith(place, place.code, account->codigo);
        addStep(plan,
                "UPDATE " + std::string(place.table) + " SET " + std::string(place.code) + " = ? WHERE " +
                    std::string(place.code) + " = ?" + std::string(place.where),
                {code, account->codigo}, rows);
        addCount(plan, place, rows);
    };
    change(ownCode);
    for (const CodePlace& place : codeReferences) change(place);
    plan.codes.push_back(
        {.from = account->codigo, .to = code, .name = text::trim(account->nombre), .lines = plan.counts[1].rows});
    return plan;
}

}  // namespace FendaMaestros
