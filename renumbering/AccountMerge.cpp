#include <algorithm>

#include "renumbering/Planning.h"
#include "session/Literal.h"
#include "toolkit/Text.h"

/// Two sub-accounts become one.
namespace FendaMaestros {

namespace {

using Identity = AccountsToMerge::Identity;

struct Invoices {
    std::string document;
    std::int64_t count = 0;
};

/// Those of the identity of an account.
Invoices invoicesOf(const CompanyCodes& company, const SubcuentaRecord& account) {
    const auto identity = company.connection.Execute("SELECT Nif_Doc FROM KXComun.dbo.Nif WHERE Nif_Id = " +
                                                     std::to_string(account.idNif));
    if (identity->Eof()) return {};
    Invoices invoices{.document = text::trimEnd(identity->cell(0, 0).text())};
    if (!invoices.document.empty())
        invoices.count =
            company.connection.Execute("SELECT COUNT(*) FROM Fac WHERE Fac_Doc = " + literal(invoices.document))
                ->cell(0, 0)
                .integer();
    return invoices;
}

std::string inWords(const Invoices& invoices) {
    std::string document = invoices.document.empty() ? "sin documento" : invoices.document;
    if (invoices.count == 0) return document;
    return document + " (" + (invoices.count == 1 ? "1 factura" : std::to_string(invoices.count) + " facturas") + ")";
}

class Merging {
public:
    Merging(const CompanyCodes& company, Identity identity, RenumberingPlan& plan, const SubcuentaRecord& leaving,
            const SubcuentaRecord& staying)
        : company_(company), plan_(plan), leaving_(leaving), staying_(staying), merged_(staying) {
        chooseIdentity(identity);
        takeWhatIsMissing();
        warn();
    }

    void write() {
        addCount(plan_, ownCode, 1);
        for (const CodePlace& place : codeReferences) {
            const std::int64_t byCode = redirect(place, place.code, leaving_.codigo, staying_.codigo);
            std::int64_t rows = byCode;
            if (!place.id.empty()) rows = std::max(rows, redirect(place, place.id, leaving_.id, staying_.id));
            addCount(plan_, place, rows);
        }
        // Behind the redirections, which reach the row of the one that stays too.
        if (!(merged_ == staying_)) store();
        addStep(plan_, "DELETE FROM PCta WHERE PCta_Id = ?", {leaving_.id}, 1);
    }

private:
    void chooseIdentity(Identity chosen) {
        if (leaving_.idNif == 0 || leaving_.idNif == staying_.idNif) return;
        const std::string mine = inWords(invoicesOf(company_, leaving_));
        if (staying_.idNif == 0) return takeIdentity(mine);
        const std::string yours = inWords(invoicesOf(company_, staying_));
        if (chosen == Identity::Unsaid)
            plan_.obstacles.push_back("Tienen identidades distintas, " + mine + " y " + yours +
                                      ": hay que decir cuál queda.");
        if (chosen == Identity::OfFirst) takeIdentity(mine);
        if (chosen != Identity::Unsaid)
            plan_.notes.push_back("La identidad " + (chosen == Identity::OfFirst ? yours : mine) +
                                  " deja de estar en esta subcuenta y sigue en el registro con sus facturas.");
    }

    void takeIdentity(const std::string& inWords) {
        merged_.idNif = leaving_.idNif;
        merged_.origen = 0;
        plan_.notes.push_back("La que queda toma la identidad " + inWords + ".");
    }

    /// A link to one of both would lead to itself.
    bool isOneOfBoth(const std::string& code) const {
        return text::trimEnd(code) == leaving_.codigo || text::trimEnd(code) == staying_.codigo;
    }
    bool isLinkedToOneOfBoth(const SubcuentaRecord& account) const {
        return account.idAsociada == leaving_.id || account.idAsociada == staying_.id || isOneOfBoth(account.asociada);
    }

    void takeWhatIsMissing() {
        if (isLinkedToOneOfBoth(merged_)) {
            merged_.asociada.clear();
            merged_.idAsociada = 0;
        }
        if (isOneOfBoth(merged_.irpf)) merged_.irpf.clear();
        std::string taken;
        const auto note = [&taken](const std::string& what) { taken += (taken.empty() ? "" : ", ") + what; };
        if (merged_.asociada.empty() && !leaving_.asociada.empty() && !isLinkedToOneOfBoth(leaving_)) {
            merged_.asociada = leaving_.asociada;
            merged_.idAsociada = leaving_.idAsociada;
            note("la cuenta asociada " + merged_.asociada);
        }
        if (merged_.irpf.empty() && !leaving_.irpf.empty() && !isOneOfBoth(leaving_.irpf)) {
            merged_.irpf = leaving_.irpf;
            note("la cuenta de I.R.P.F. " + merged_.irpf);
        }
        for (const auto& [member, what] : {std::pair(&SubcuentaRecord::idCentro, "el centro"),
                                           {&SubcuentaRecord::idDpto, "el departamento"},
                                           {&SubcuentaRecord::idMasa, "la masa patrimonial"}}) {
            if (merged_.*member != 0 || leaving_.*member == 0) continue;
            merged_.*member = leaving_.*member;
            note(what);
        }
        if (!taken.empty()) plan_.notes.push_back("La que queda toma lo que no tenía: " + taken + ".");
    }

    void warn() {
        const auto group = [this](const SubcuentaRecord& account) { return company_.official.groupOf(account.codigo); };
        if (group(leaving_) != group(staying_))
            plan_.notes.emplace_back("Cuelgan de cuentas distintas del plan oficial: el saldo cambia de sitio.");
        if (leaving_.activa && !staying_.activa) plan_.notes.emplace_back("La que queda está inactiva.");
    }

    std::int64_t redirect(const CodePlace& place, std::string_view column, const Variant& from, const Variant& to) {
        const std::int64_t rows = company_.rowsWith(place, column, from);
        addStep(plan_,
                "UPDATE " + std::string(place.table) + " SET " + std::string(column) + " = ? WHERE " +
                    std::string(column) + " = ?",
                {to, from}, rows);
        return rows;
    }

    void store() {
        std::string columns;
        for (const std::string_view column : columnasSubcuenta())
            columns += (columns.empty() ? "" : ", ") + std::string(column) + " = ?";
        std::vector<Variant> values = valoresSubcuenta(merged_);
        values.emplace_back(merged_.id);
        addStep(plan_, "UPDATE PCta SET " + columns + " WHERE PCta_Id = ?", std::move(values), 1);
    }

    const CompanyCodes& company_;
    RenumberingPlan& plan_;
    const SubcuentaRecord& leaving_;
    const SubcuentaRecord& staying_;
    SubcuentaRecord merged_;
};

}  // namespace

RenumberingPlan planOf(const CompanyCodes& company, const AccountsToMerge& wanted) {
    RenumberingPlan plan{.title = "Fundir dos subcuentas en una"};
    const auto leaving = company.account(wanted.from, plan), staying = company.account(wanted.into, plan);
    if (!leaving || !staying) return plan;
    plan.title = "Subcuenta " + leaving->codigo + " fundida en la " + staying->codigo;
    if (leaving->id == staying->id) {
        plan.obstacles.emplace_back("Son la misma subcuenta.");
        return plan;
    }
    Merging(company, wanted.identity, plan, *leaving, *staying).write();
    plan.notes.push_back("Queda " + nameOf(*staying) + "; " + nameOf(*leaving) + " se elimina.");
    plan.codes.push_back({.from = leaving->codigo,
                          .to = staying->codigo,
                          .name = text::trim(leaving->nombre),
                          .lines = plan.counts[1].rows});
    return plan;
}

}  // namespace FendaMaestros
