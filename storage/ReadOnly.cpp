#include "storage/ReadOnly.h"

#include <algorithm>
#include <span>

#include "toolkit/Text.h"

namespace FendaMaestros::storage {

namespace {

/// Words that stand before a parenthesis and call nothing.
constexpr std::string_view keywords[] = {
    "ALL",    "AND",  "ANY",    "AS",   "BETWEEN",   "BY",    "CASE",  "DISTINCT", "ELSE", "EXCEPT",
    "EXISTS", "FROM", "HAVING", "IN",   "INTERSECT", "IS",    "JOIN",  "LIKE",     "NOT",  "ON",
    "OR",     "OVER", "SELECT", "SOME", "THEN",      "UNION", "USING", "VALUES",   "WHEN", "WHERE",
};

constexpr std::string_view functions[] = {
    "ABS",    "AVG",     "CAST",  "COALESCE", "COUNT",  "ISNULL",    "LEN", "LOWER", "LTRIM", "MAX",  "MIN",
    "NULLIF", "REPLACE", "ROUND", "RTRIM",    "SUBSTR", "SUBSTRING", "SUM", "TRIM",  "UPPER", "YEAR",
};

/// What would make more than a read of a text that begins as one.
constexpr std::string_view writes[] = {"INSERT", "UPDATE", "DELETE", "MERGE", "INTO"};

bool isAnyOf(std::string_view word, std::span<const std::string_view> others) {
    return std::ranges::any_of(others, [word](auto other) { return text::equalIgnoringCase(word, other); });
}

}  // namespace

bool admitsInRead(std::string_view word, bool called) {
    if (called) return isAnyOf(word, keywords) || isAnyOf(word, functions);
    return !isAnyOf(word, writes);
}

bool beginsAsWriteOfRows(std::string_view sql) {
    const auto word = sql.substr(0, sql.find(' '));
    return isAnyOf(word, std::span(writes).first(3));
}

}  // namespace FendaMaestros::storage
