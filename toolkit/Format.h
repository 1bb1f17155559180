#pragma once

#include <string>
#include <string_view>

#include "toolkit/Variant.h"

namespace FendaMaestros {

/// A value shown under a mask, with the Spanish decimal comma and thousands point whatever the machine's language.
/// Masks: zeros alone ("00", "0000") pad a whole number; "#,##0.00" and alike group the thousands and fix the decimals,
/// any text after the digits is kept ("##,###,##0.00 " ends in a blank); "dd/mm/yyyy" turns an ISO date into the
/// Spanish order. An empty mask, null, or a text that the mask does not fit, give the value's own text.
std::string format(const Variant& value, std::string_view mask);

/// How many there are of something, in words: "1 cuenta", "1.234 cuentas".
std::string counted(int count, std::string_view one, std::string_view many);

}  // namespace FendaMaestros
