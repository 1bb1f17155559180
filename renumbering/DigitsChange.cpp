#include <algorithm>
#include <map>
#include <unordered_map>

#include "renumbering/CodeLength.h"
#include "renumbering/Planning.h"
#include "session/Companies.h"
#include "storage/Parameters.h"
#include "toolkit/Text.h"

/// All sub-accounts get codes of another length.
namespace FendaMaestros {

namespace {

/// Rows that one write touches at most, unless they all have one code: in between, it is told how far the work is.
constexpr std::int64_t rowsOfAStep = 50'000;

struct UsedCode {
    std::string code;
    std::int64_t rows = 0;
};

/// The codes in a place, in their order.
std::vector<UsedCode> codesIn(ConexionBd& connection, const CodePlace& place) {
    const std::string column(place.code);
    const auto rows = connection.Execute("SELECT " + column + ",COUNT(*) FROM " + std::string(place.table) + " WHERE " +
                                         column + "<>''" + std::string(place.where) + " GROUP BY " + column);
    std::vector<UsedCode> codes;
    codes.reserve(static_cast<std::size_t>(rows->rowCount()));
    for (int row = 0; row < rows->rowCount(); ++row)
        codes.push_back({text::trimEnd(rows->textView(row, 0)), rows->cell(row, 1).integer()});
    std::ranges::sort(codes, {}, &UsedCode::code);
    return codes;
}

class Resizing {
public:
    Resizing(const CompanyCodes& company, std::size_t digits, RenumberingPlan& plan)
        : company_(company), digits_(digits), plan_(plan) {
        for (const CodePlace& place : codeReferences) readReferences(place);
        readAccounts();
        addWithoutAccount();
        tellCollisions();
        tellForbidden();
    }

    void write() {
        writeIn(ownCode, codesIn(company_.connection, ownCode));
        for (const auto& [place, codes] : references_) writeIn(*place, codes);
        Statement change = storage::digitsChange(static_cast<int>(digits_));
        addStep(plan_, std::move(change.sql), std::move(change.parameters), 1);
    }

private:
    void readReferences(const CodePlace& place) {
        auto& [where, codes] = references_.emplace_back(&place, codesIn(company_.connection, place));
        for (const UsedCode& used : codes) {
            resizedCode(used.code);
            if (where == &codeReferences.front()) lines_.emplace(used.code, used.rows);
        }
    }

    void readAccounts() {
        const auto rows = company_.connection.Execute(
            "SELECT PCta_Cta,PCta_Des FROM PCta WHERE PCta_Subcuenta=1 ORDER BY PCta_Cta,PCta_Id");
        plan_.codes.reserve(static_cast<std::size_t>(rows->rowCount()));
        for (int row = 0; row < rows->rowCount(); ++row) {
            const std::string code = text::trimEnd(rows->textView(row, 0));
            add(code, text::trim(rows->textView(row, 1)), resizedCode(code));
        }
    }

    /// Codes of other lengths that only references have stay as they are.
    void addWithoutAccount() {
        const std::size_t accounts = plan_.codes.size();
        for (const auto& [code, changed] : resized_)
            if (!listed_.contains(code) && code.size() == company_.digits) add(code, {}, changed);
        if (const std::size_t added = plan_.codes.size() - accounts; added > 0)
            plan_.notes.push_back("Hay apuntes o enlaces con códigos que no tiene ninguna subcuenta (" +
                                  std::to_string(added) + "): cambian como si la hubiera.");
    }

    void add(const std::string& code, std::string name, const ResizedCode& changed) {
        const auto lines = lines_.find(code);
        listed_.emplace(code, plan_.codes.size());
        plan_.codes.push_back({.from = code,
                               .to = changed.code,
                               .name = std::move(name),
                               .lines = lines == lines_.end() ? 0 : lines->second,
                               .why = changed.why});
    }

    const ResizedCode& resizedCode(const std::string& code) {
        const auto [known, isNew] = resized_.try_emplace(code);
        if (!isNew) return known->second;
        ResizedCode& changed = known->second;
        if (!text::isNumericCode(code))
            changed.why = "no son solo cifras";
        else if (code.size() != company_.digits)
            changed.why = "tiene " + std::to_string(code.size()) + " cifras, y no " + std::to_string(company_.digits);
        else
            changed = resized(code, digits_, company_.official);
        if (changed.why.empty() && company_.official.has(changed.code))
            changed.why = "la " + changed.code + " es una cuenta del plan oficial";
        return changed;
    }

    void tellCollisions() {
        std::unordered_map<std::string, std::string> takenBy;
        for (const auto& [code, changed] : resized_)
            if (!listed_.contains(code)) takenBy.emplace(code, std::string());
        for (const CodeChange& change : plan_.codes) takenBy.emplace(change.to, change.from);
        for (CodeChange& change : plan_.codes) {
            if (!change.why.empty()) continue;
            const std::string& other = takenBy.at(change.to);
            if (other == change.from) continue;
            change.why = other.empty() ? "ya hay apuntes o enlaces con el código " + change.to
                                       : "también la " + other + " sería la " + change.to;
            if (other.empty()) continue;
            CodeChange& first = plan_.codes[listed_.at(other)];
            if (first.why.empty()) first.why = "también la " + change.from + " sería la " + change.to;
        }
    }

    /// What forbids it stands first.
    void tellForbidden() {
        const auto allowed = std::stable_partition(plan_.codes.begin(), plan_.codes.end(),
                                                   [](const CodeChange& change) { return !change.why.empty(); });
        const auto wrong = allowed - plan_.codes.begin();
        if (wrong == 0) return;
        plan_.obstacles.push_back(wrong == 1 ? "Hay un código que no se puede cambiar; junto a él se dice por qué."
                                             : "Hay " + std::to_string(wrong) +
                                                   " códigos que no se pueden cambiar; junto a cada uno se dice por "
                                                   "qué.");
    }

    /// Neighbours whose zeros stand in the same place change together.
    void writeIn(const CodePlace& place, const std::vector<UsedCode>& codes) {
        std::int64_t all = 0;
        auto used = codes.begin();
        while (used != codes.end()) {
            if (used->code.size() != company_.digits) {
                ++used;
                continue;
            }
            const std::size_t kept = resized_.at(used->code).kept;
            const std::string& first = used->code;
            const std::string* last = &first;
            std::int64_t rows = 0;
            for (; used != codes.end() && (rows == 0 || rows + used->rows <= rowsOfAStep); ++used) {
                if (used->code.size() != company_.digits) continue;
                if (resized_.at(used->code).kept != kept) break;
                last = &used->code;
                rows += used->rows;
            }
            writeRun(place, kept, first, *last, rows);
            all += rows;
        }
        addCount(plan_, place, all);
    }

    void writeRun(const CodePlace& place, std::size_t kept, const std::string& first, const std::string& last,
                  std::int64_t rows) {
        const bool grows = digits_ > company_.digits;
        const std::size_t difference = grows ? digits_ - company_.digits : company_.digits - digits_;
        const std::size_t rest = kept + 1 + (grows ? 0 : difference);
        const std::string column(place.code);
        addStep(plan_,
                "UPDATE " + std::string(place.table) + " SET " + column + " = SUBSTRING(" + column + ",1," +
                    std::to_string(kept) + ") + ? + SUBSTRING(" + column + "," + std::to_string(rest) + ",20) WHERE " +
                    column + " >= ? AND " + column + " <= ? AND LEN(" + column +
                    ") = " + std::to_string(company_.digits) + std::string(place.where),
                {std::string(grows ? difference : 0, '0'), first, last}, rows);
    }

    const CompanyCodes& company_;
    const std::size_t digits_;
    RenumberingPlan& plan_;
    std::vector<std::pair<const CodePlace*, std::vector<UsedCode>>> references_;
    std::unordered_map<std::string, std::int64_t> lines_;
    std::map<std::string, ResizedCode> resized_;
    /// Where a code is told.
    std::unordered_map<std::string, std::size_t> listed_;
};

/// Throws ErrorBd (Refused), with the sentence for a person.
void requireDigits(const CompanyCodes& company, int digits) {
    check({.name = "-", .fiscalYear = company.fiscalYear, .accountDigits = digits});
    if (digits == static_cast<int>(company.digits))
        throw ErrorBd(ErrorBd::Kind::Refused, "Las subcuentas ya son de " + std::to_string(digits) + " dígitos.");
}

}  // namespace

RenumberingPlan planOf(const CompanyCodes& company, const DigitsToChange& wanted) {
    RenumberingPlan plan{.title = "Subcuentas de " + std::to_string(company.digits) + " a " +
                                  std::to_string(wanted.digits) + " dígitos"};
    try {
        requireDigits(company, wanted.digits);
    } catch (const ErrorBd& refused) {
        plan.obstacles.emplace_back(refused.what());
        return plan;
    }
    Resizing resizing(company, static_cast<std::size_t>(wanted.digits), plan);
    if (!plan.allowed()) return plan;
    resizing.write();
    plan.notes.emplace_back("Los demás puestos deben salir de la empresa antes, y volver a abrirla después.");
    return plan;
}

}  // namespace FendaMaestros
