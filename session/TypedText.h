#pragma once

#include <optional>
#include <string_view>

#include "toolkit/Desktop.h"
#include "toolkit/Variant.h"

/// What a person or a program has written as text, read as a value. Nothing when the whole text, but for blanks around
/// it, is not such a value.
namespace FendaMaestros::typed {

/// "12", "-7.5": digits, at most one decimal point with digits on both sides. A whole number beyond 64 bits is none.
std::optional<Variant> number(std::string_view text);

/// An amount as Spanish writes it: "1234,5", "1.234,50", "-7". A point that cannot part thousands is taken as the
/// decimal one ("12.5"). At most 15 digits, which a double holds exactly.
std::optional<double> amount(std::string_view text);

/// A day of the calendar: "1/2/26", "01-02-2026", "1.2.2026", "01022026", "010226". Years of two digits lie between
/// 1930 and 2029.
std::optional<Date> date(std::string_view text);

}  // namespace FendaMaestros::typed
