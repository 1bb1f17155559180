#include "platform/sqlite/SqlTranslation.h"

#include "platform/sqlite/Functions.h"
#include "storage/SqlTranslation.h"
#include "storage/TextScan.h"

namespace FendaMaestros::sqlite {

std::string translate(std::string_view text) {
    static constexpr storage::Dialect dialect{
        .ifNull = "ifnull",
        .join = joinOperator,
        .orderTerm = " COLLATE ES",
        .parameter = [](char mark, int) -> std::string { return mark == storage::textMark ? "? COLLATE ES" : "?"; }};
    return storage::translate(text, dialect).text;
}

}  // namespace FendaMaestros::sqlite
