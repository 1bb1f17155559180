#pragma once

#include <cstddef>
#include <string>

#include "renumbering/OfficialPlan.h"

namespace FendaMaestros {

/// A code with as many digits as it is to have.
struct ResizedCode {
    std::string code = {};
    /// Digits that stay before the zeros that come or go.
    std::size_t kept = 0;
    std::string why = {};  ///< why there is none; then the rest means nothing
};

/// Gives a code of digits another length: zeros come or go behind the account of the official plan that it hangs from,
/// as where a comma stands for them. It still hangs from the same one, if need be with the zeros a digit or two further
/// on; without one, its group is its first three digits. Nothing but zeros goes.
ResizedCode resized(const std::string& code, std::size_t digits, const OfficialPlan& plan);

}  // namespace FendaMaestros
