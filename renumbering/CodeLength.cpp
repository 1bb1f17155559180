#include "renumbering/CodeLength.h"

#include <algorithm>

#include "chart/CodigosCuenta.h"

namespace FendaMaestros {

namespace {

constexpr std::size_t shortestGroup = planLengths.back();
constexpr std::size_t longestGroup = planLengths.front();

}  // namespace

ResizedCode resized(const std::string& code, std::size_t digits, const OfficialPlan& plan) {
    const bool grows = digits >= code.size();
    const std::string zeros(grows ? digits - code.size() : code.size() - digits, '0');
    const std::string group = plan.groupOf(code);
    bool hasZeros = grows;
    for (std::size_t kept = std::max(group.size(), shortestGroup); kept <= std::min(longestGroup, code.size());
         ++kept) {
        std::string changed = code;
        if (grows) {
            changed.insert(kept, zeros);
        } else {
            if (code.compare(kept, zeros.size(), zeros) != 0) continue;
            hasZeros = true;
            changed.erase(kept, zeros.size());
        }
        if (plan.groupOf(changed) == group) return {.code = std::move(changed), .kept = kept};
    }
    return {.why = "con " + std::to_string(digits) + " dígitos " +
                   (hasZeros ? "colgaría de otra cuenta del plan oficial" : "perdería cifras")};
}

}  // namespace FendaMaestros
