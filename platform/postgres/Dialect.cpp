#include "platform/postgres/Dialect.h"

#include <string>

#include "platform/postgres/Preparation.h"
#include "storage/ReadOnly.h"
#include "storage/TextScan.h"

namespace FendaMaestros::postgres {

namespace {

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
    dialect.admits = storage::admitsInRead;
    dialect.lastTerm = "1";
    return dialect;
}();

}  // namespace

storage::Translation translateRead(std::string_view text) { return storage::translate(text, reading); }

storage::Translation translateWrite(std::string_view text) { return storage::translate(text, writing); }

}  // namespace FendaMaestros::postgres
