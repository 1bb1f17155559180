#include "platform/postgres/Dialect.h"

#include <algorithm>
#include <string>

#include "platform/postgres/Preparation.h"
#include "storage/TextScan.h"
#include "toolkit/Text.h"

namespace FendaMaestros::postgres {

namespace {

/// Words that stand before a parenthesis and call nothing.
constexpr std::string_view keywords[] = {
    "ALL",    "AND",  "ANY",    "AS",   "BETWEEN",   "BY",    "CASE",  "DISTINCT", "ELSE", "EXCEPT",
    "EXISTS", "FROM", "HAVING", "IN",   "INTERSECT", "IS",    "JOIN",  "LIKE",     "NOT",  "ON",
    "OR",     "OVER", "SELECT", "SOME", "THEN",      "UNION", "USING", "VALUES",   "WHEN", "WHERE",
};

/// A read may do no more than read: the engine has functions that write, and hundreds that a screen has no use for.
constexpr std::string_view functions[] = {
    "ABS",    "AVG",     "CAST",  "COALESCE", "COUNT",  "ISNULL",    "LEN", "LOWER", "LTRIM", "MAX",  "MIN",
    "NULLIF", "REPLACE", "ROUND", "RTRIM",    "SUBSTR", "SUBSTRING", "SUM", "TRIM",  "UPPER", "YEAR",
};

bool mayCall(std::string_view word) {
    const auto same = [word](std::string_view other) { return text::equalIgnoringCase(word, other); };
    return std::ranges::any_of(keywords, same) || std::ranges::any_of(functions, same);
}

/// A whole number is typed, for what the engine would guess is narrower than the columns; the type of a text is that of
/// what it is compared with.
std::string parameter(char mark, int position) {
    const auto name = "$" + std::to_string(position);
    if (mark == storage::integerMark) return name + "::bigint";
    if (mark == storage::realMark) return name + "::numeric";
    return name;
}

constexpr storage::Dialect writing{.ifNull = "coalesce",
                                   .join = joinOperator,
                                   .orderTerm = "",
                                   .parameter = parameter,
                                   .ascendingTerm = " NULLS FIRST",
                                   .descendingTerm = " NULLS LAST",
                                   .lastTerm = ", 1"};
constexpr storage::Dialect reading = [] {
    auto dialect = writing;
    dialect.mayCall = mayCall;
    return dialect;
}();

}  // namespace

storage::Translation translateRead(std::string_view text) { return storage::translate(text, reading); }

storage::Translation translateWrite(std::string_view text) { return storage::translate(text, writing); }

}  // namespace FendaMaestros::postgres
