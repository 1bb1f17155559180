#include "platform/sqlite/SqlTranslation.h"

#include <vector>

#include "platform/sqlite/Functions.h"
#include "session/ErrorBd.h"
#include "storage/ReadOnly.h"
#include "storage/SqlTranslation.h"
#include "storage/TextScan.h"

namespace FendaMaestros::sqlite {

namespace {

constexpr storage::Dialect dialect{
    .ifNull = "ifnull",
    .join = joinOperator,
    .orderTerm = " COLLATE ES",
    .parameter = [](char mark, int) -> std::string { return mark == storage::textMark ? "? COLLATE ES" : "?"; }};

/// Where a literal was cut out, until it is put back.
constexpr char gap = '\x04';

constexpr storage::Dialect dialectWithGaps = [] {
    auto gaps = dialect;
    gaps.parameter = [](char mark, int) {
        return std::string(1, gap) + (mark == storage::textMark ? " COLLATE ES" : "");
    };
    gaps.admits = storage::admitsInRead;
    return gaps;
}();

std::string withLiterals(std::string_view text, const std::vector<storage::Literal>& literals) {
    std::string whole;
    auto next = literals.begin();
    for (const char c : text) {
        if (c != gap) {
            whole += c;
            continue;
        }
        const bool isText =
            next->kind == storage::Literal::Kind::Text || next->kind == storage::Literal::Kind::QuotedText;
        const char* const quote = isText ? "'" : "";
        whole.append(quote).append(next->source).append(quote);
        ++next;
    }
    return whole;
}

}  // namespace

std::string translate(std::string_view text) { return storage::translate(text, dialect).text; }

std::string translateWithLiterals(std::string_view text) {
    if (storage::beginsAsWriteOfRows(text)) return translate(text);
    storage::Shape shape;
    storage::scan(text, shape);
    if (!storage::beginsAsRead(shape.text))
        throw ErrorBd(ErrorBd::Kind::Refused, "El texto no es una lectura ni una escritura de filas.");
    return withLiterals(storage::translate(shape.text, dialectWithGaps).text, shape.literals);
}

}  // namespace FendaMaestros::sqlite
