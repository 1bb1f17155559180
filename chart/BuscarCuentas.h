#pragma once

#include <cstdint>
#include <vector>

#include "toolkit/KeyHints.h"

namespace FendaMaestros {

/// Lets a person pick an account and gives its PCta_Id, 0 when none was chosen. `n`: 1 searches by code, anything else
/// by name. `bPGC`: the accounts of the official plan in `Plan` in place of the sub-accounts. `bSoloActivas` leaves out
/// inactive sub-accounts in the search by code. Sets `Plan` from the fiscal year when it is 0.
std::int32_t fnBuscarCuentas(std::int16_t n, bool bPGC, bool bSoloActivas);

/// The keys that search in a field that holds the code of an account.
std::vector<KeyHint> accountSearches();

/// Lets a person pick an accounting concept with a code below 1000 and gives its Conce_Id, 0 when none was chosen.
/// `n`: 1 searches by code, anything else by name.
std::int32_t fnBuscarConceptos(std::int16_t n);

}  // namespace FendaMaestros
