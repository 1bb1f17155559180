#include "platform/postgres/Dialect.h"

#include <algorithm>
#include <span>
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

/// What would make more than a read of a text that begins as one.
constexpr std::string_view writes[] = {"INSERT", "UPDATE", "DELETE", "MERGE", "INTO"};

bool isAnyOf(std::string_view word, std::span<const std::string_view> others) {
    return std::ranges::any_of(others, [word](auto other) { return text::equalIgnoringCase(word, other); });
}

bool admits(std::string_view word, bool called) {
    if (called) return isAnyOf(word, keywords) || isAnyOf(word, functions);
    return !isAnyOf(word, writes);
}

/// A whole number is typed, for what the engine would guess is narrower than the columns; the type of a text is that of
/// what it is compared with.
std::string parameter(char mark, int position) {
    auto name = "$" + std::to_string(position);
    if (mark == storage::integerMark) return name + "::bigint";
    if (mark == storage::realMark) return name + "::numeric";
    return name;
}

constexpr storage::Dialect writing{.ifNull = "coalesce",
                                   .join = joinOperator,
                                   .orderTerm = "",
                                   .parameter = parameter,
                                   .ascendingTerm = " NULLS FIRST",
                                   .descendingTerm = " NULLS LAST"};
/// Rows that nothing else orders come in the order of their first column, which most often is the identity.
constexpr storage::Dialect reading = [] {
    auto dialect = writing;
    dialect.admits = admits;
    dialect.lastTerm = "1";
    return dialect;
}();

}  // namespace

storage::Translation translateRead(std::string_view text) { return storage::translate(text, reading); }

storage::Translation translateWrite(std::string_view text) { return storage::translate(text, writing); }

}  // namespace FendaMaestros::postgres
