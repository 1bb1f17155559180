#include "session/Condition.h"

#include <algorithm>
#include <array>

#include "session/Identifier.h"
#include "session/TypedText.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

/// Words that stand for a value of their own, or for grammar, where a column is due.
bool isReserved(std::string_view word) {
    constexpr std::array<std::string_view, 18> words{
        "and",  "or", "not", "null",    "true", "false", "where",        "select",       "exists",
        "case", "is", "in",  "between", "like", "cast",  "current_date", "current_time", "current_timestamp",
    };
    return std::ranges::any_of(words, [word](std::string_view other) { return text::equalIgnoringCase(word, other); });
}

/// Takes one token after the other off the front of a text; each take gives nothing, and takes nothing, when another
/// token comes.
class Scanner {
public:
    explicit Scanner(std::string_view text) : rest_(text) {}

    bool atEnd() const { return rest_.empty(); }
    bool skipBlanks() {
        return !takeWhile([](char c) { return c == ' '; }).empty();
    }
    bool take(std::string_view symbol) {
        if (!rest_.starts_with(symbol)) return false;
        rest_.remove_prefix(symbol.size());
        return true;
    }
    bool takeKeyword(std::string_view keyword) {
        const std::string_view before = rest_;
        if (text::equalIgnoringCase(takeWord(), keyword)) return true;
        rest_ = before;
        return false;
    }
    std::string_view takeWord() {
        const bool begins = !rest_.empty() && identifier::canBegin(rest_.front());
        return begins ? takeWhile(identifier::belongs) : std::string_view();
    }
    std::string_view takeOperator() {
        for (std::string_view symbol : {"<>", "<=", ">=", "=", "<", ">"})
            if (take(symbol)) return symbol;
        return {};
    }
    std::optional<Variant> takeLiteral() {
        return take("'") ? takeQuotedRest()
                         : typed::number(takeWhile([](char c) { return text::isDigit(c) || c == '-' || c == '.'; }));
    }

private:
    template <class Predicate>
    std::string_view takeWhile(Predicate belongs) {
        const auto end = std::ranges::find_if_not(rest_, belongs) - rest_.begin();
        const std::string_view taken = rest_.substr(0, static_cast<std::size_t>(end));
        rest_.remove_prefix(taken.size());
        return taken;
    }

    /// A text behind its opening quote: up to the first quote that is not doubled.
    std::optional<Variant> takeQuotedRest() {
        std::string value;
        for (auto quote = rest_.find('\''); quote != std::string_view::npos; quote = rest_.find('\'')) {
            value += rest_.substr(0, quote);
            rest_.remove_prefix(quote + 1);
            if (!take("'")) return value;
            value += '\'';
        }
        return std::nullopt;
    }

    std::string_view rest_;
};

/// A column or year(column), with one form of blanks; empty when it is anything else.
std::string takeOperand(Scanner& scanner) {
    const std::string_view word = scanner.takeWord();
    if (word.empty() || isReserved(word)) return {};
    if (!scanner.take("(")) return std::string(word);

    scanner.skipBlanks();
    const std::string_view column = scanner.takeWord();
    scanner.skipBlanks();
    const bool isYear = text::equalIgnoringCase(word, "year") && !column.empty() && !isReserved(column);
    return isYear && scanner.take(")") ? "year(" + std::string(column) + ")" : std::string();
}

bool readComparison(Scanner& scanner, Condition& condition) {
    const std::string operand = takeOperand(scanner);
    scanner.skipBlanks();
    const std::string_view comparison = scanner.takeOperator();
    scanner.skipBlanks();
    if (operand.empty() || comparison.empty()) return false;
    std::optional<Variant> literal = scanner.takeLiteral();
    if (!literal) return false;

    condition.sql.append(operand).append(" ").append(comparison).append(" ?");
    condition.parameters.push_back(std::move(*literal));
    return true;
}

}  // namespace

std::optional<Condition> readCondition(std::string_view where) {
    Scanner scanner(where);
    scanner.skipBlanks();
    if (!scanner.takeKeyword("where") || !scanner.skipBlanks()) return std::nullopt;

    Condition condition{.sql = " WHERE ", .parameters = {}};
    for (;;) {
        if (!readComparison(scanner, condition)) return std::nullopt;
        const bool parted = scanner.skipBlanks();
        if (scanner.atEnd()) return condition;
        if (!parted || !scanner.takeKeyword("and") || !scanner.skipBlanks()) return std::nullopt;
        condition.sql += " AND ";
    }
}

}  // namespace FendaMaestros
