#include "platform/postgres/ColumnNames.h"

#include <libpq-fe.h>

#include "storage/Characters.h"
#include "storage/Schema.h"
#include "toolkit/Text.h"

namespace FendaMaestros::postgres {

namespace {

bool same(std::string_view a, std::string_view b) { return text::equalIgnoringCase(a, b); }

std::string_view trimmed(std::string_view text) {
    while (!text.empty() && storage::isBlank(text.front())) text.remove_prefix(1);
    while (!text.empty() && storage::isBlank(text.back())) text.remove_suffix(1);
    return text;
}

/// The name of a column as the tables define it; `otherwise` when none does.
std::string_view asDefined(std::string_view name, std::string_view otherwise) {
    for (const auto* schema : {&storage::companySchema(), &storage::sharedSchema()})
        for (const auto& table : schema->tables)
            for (const auto& column : table.columns)
                if (same(column.name, name)) return column.name;
    return otherwise;
}

/// Takes what a text begins with: a word, or all up to the end of a quoted text or name, or one character.
std::string_view takeToken(std::string_view& text) {
    std::size_t length = 1;
    const char first = text.front(), close = first == '[' ? ']' : first;
    if (first == '\'' || first == '"' || first == '[')
        length = std::min(text.size(), text.find(close, 1) + 1);
    else if (storage::isWordByte(first))
        while (length < text.size() && storage::isWordByte(text[length])) ++length;
    const auto token = text.substr(0, length);
    text.remove_prefix(length);
    return token;
}

/// The terms between SELECT and FROM; none for a text that begins otherwise.
std::vector<std::string_view> selectTerms(std::string_view sql) {
    sql = trimmed(sql);
    if (sql.empty() || !same(takeToken(sql), "SELECT")) return {};
    std::vector<std::string_view> terms;
    const char* begin = sql.data();
    int depth = 0;
    const auto endTerm = [&](const char* end) {
        terms.push_back(trimmed({begin, static_cast<std::size_t>(end - begin)}));
    };
    while (!sql.empty()) {
        const auto token = takeToken(sql);
        if (token == "(") ++depth;
        if (token == ")") --depth;
        if (depth > 0) continue;
        if (same(token, "FROM") || same(token, "UNION")) {
            endTerm(token.data());
            return terms;
        }
        if (same(token, "DISTINCT")) begin = sql.data();
        if (same(token, "TOP")) {
            sql = trimmed(sql);
            if (!sql.empty()) takeToken(sql);
            begin = sql.data();
        }
        if (token == ",") {
            endTerm(token.data());
            begin = sql.data();
        }
    }
    endTerm(sql.data());
    return terms;
}

bool isStar(std::string_view term) { return term.ends_with('*'); }

/// The last word of a term without its quotes; empty when it ends otherwise.
std::string_view lastName(std::string_view term) {
    std::string_view last;
    while (!term.empty()) last = takeToken(term);
    if (last.size() >= 2 && (last.front() == '[' || last.front() == '"')) return last.substr(1, last.size() - 2);
    return !last.empty() && storage::isWordByte(last.front()) ? last : std::string_view();
}

bool isColumn(std::string_view term) {
    for (const char c : term)
        if (!storage::isWordByte(c) && c != '.') return false;
    return true;
}

/// The columns of a result as the engine calls them.
class Given {
public:
    explicit Given(const PGresult* result) : result_(result) {}

    std::size_t count() const { return static_cast<std::size_t>(PQnfields(result_)); }
    std::string_view name(std::size_t column) const { return PQfname(result_, static_cast<int>(column)); }
    /// Whether it is the column of a table, handed through.
    bool isOfTable(std::size_t column) const { return PQftable(result_, static_cast<int>(column)) != InvalidOid; }
    std::string_view defined(std::size_t column) const { return asDefined(name(column), name(column)); }

private:
    const PGresult* result_;
};

std::string_view nameOf(std::string_view term, const Given& given, std::size_t column) {
    const auto last = lastName(term);
    if (isColumn(term)) return given.isOfTable(column) ? asDefined(given.name(column), last) : last;
    return same(last, given.name(column)) ? last : term;
}

}  // namespace

std::vector<std::string> columnNames(std::string_view sql, const PGresult* result) {
    const Given given(result);
    const auto terms = selectTerms(sql);
    std::vector<std::string> names;
    for (std::size_t i = 0; i < terms.size() && names.size() < given.count(); ++i) {
        if (!isStar(terms[i])) {
            names.emplace_back(nameOf(terms[i], given, names.size()));
            continue;
        }
        const auto behind = terms.size() - i - 1;
        while (names.size() + behind < given.count()) names.emplace_back(given.defined(names.size()));
    }
    while (names.size() < given.count()) names.emplace_back(given.defined(names.size()));
    return names;
}

}  // namespace FendaMaestros::postgres
