#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "session/Recordset.h"

/// Codes of accounts. A sub-account has as many digits as the company parameter `Par_CtaNum` says ("digits" below), and
/// its first ones name the account of the official plan that it hangs from.
namespace FendaMaestros {

/// The code ends in a comma: the next free code of the group before it is asked for.
bool asksForNextCode(std::string_view typed);

/// What a typed code becomes when its field is left: its first comma stands for the zeros missing in that place, and
/// zeros fill what is missing on the right. Blank texts, and those that are long enough, stay as they are.
std::string completedCode(const std::string& typed, std::size_t digits);

/// Reads the highest code of the sub-accounts that begin with `prefix`: one row with one column, null when there is
/// none.
std::string highestCodeSql(const std::string& prefix);

struct NextCode {
    std::string code;
    /// Why there is none, as a message to show; then `code` is empty.
    std::string refusal;
};

/// The code that follows `highest`, the value read with highestCodeSql(). It may leave the group, and lose leading
/// zeros: it is the number plus one, exact for any length. Refused when `highest` is no number, and when it is null and
/// `prefix` leaves no room for a digit behind it.
NextCode nextCode(const Variant& highest, const std::string& prefix, std::size_t digits);

/// Whether an account of this code has a tax identity: customers, suppliers, creditors and suppliers of fixed assets.
bool needsIdentity(std::string_view code);

/// The digits of the accounts of the official plan that sub-accounts hang from, in the order in which they are looked
/// for.
inline constexpr std::array<std::size_t, 3> planLengths{5, 4, 3};

/// Reads the codes of the official plan that sub-accounts hang from, one column; years as planAccount().
std::string planCodesSql(std::int16_t nEjercicio);

/// The row of the official plan's account that a code hangs from, the longest of 5, 4 or 3 digits; null when there is
/// none. From 2008 on the plan is that of 2008; before, that of the year given. Reads through InstanciaActual.
std::shared_ptr<Recordset> planAccount(const std::string& sCuenta, std::int16_t nEjercicio);

/// Whether a code hangs from an account of the official plan, or, with `bPreguntar`, a person wants to work with it all
/// the same. The question stands over the screen on top, if there is one.
bool msValidaCuentaPlan(const std::string& sCuenta, std::int16_t nEjercicio, bool bPreguntar);

}  // namespace FendaMaestros
