#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>

#include "session/ConexionBd.h"

namespace FendaMaestros {

/// The codes of the official plans of a company, read once.
class OfficialPlan {
public:
    /// `fiscalYear` says which plan is in force. Errors as ConexionBd::Execute.
    OfficialPlan(ConexionBd& connection, std::int16_t fiscalYear);

    /// The account of the plan in force that a code hangs from; "" when there is none.
    std::string groupOf(std::string_view code) const;
    /// Whether an account of any plan has this code.
    bool has(const std::string& code) const { return all_.contains(code); }

private:
    std::unordered_set<std::string> inForce_, all_;
};

}  // namespace FendaMaestros
