#include "storage/SqlTranslation.h"

#include <optional>
#include <vector>

#include "session/ErrorBd.h"
#include "storage/Characters.h"
#include "storage/TextScan.h"
#include "toolkit/Text.h"

namespace FendaMaestros::storage {

namespace {

[[noreturn]] void refuse(const std::string& sentence) { throw ErrorBd(ErrorBd::Kind::Refused, sentence); }

bool is(std::string_view token, std::string_view keyword) { return text::equalIgnoringCase(token, keyword); }

bool isAnyOf(std::string_view token, std::initializer_list<std::string_view> keywords) {
    for (const auto keyword : keywords)
        if (is(token, keyword)) return true;
    return false;
}

/// What gives a number, whatever stands in its parentheses.
bool givesNumber(std::string_view function) {
    return isAnyOf(function, {"SUM", "COUNT", "AVG", "TOTAL", "LEN", "YEAR"});
}

/// The length of the token that begins a text: a word, a number, a quoted text or name, blanks, or one sign.
std::size_t tokenLength(std::string_view text) {
    const char first = text.front();
    if (first == '\'' || first == '"' || first == '[') {
        const auto close = text.find(first == '[' ? ']' : first, 1);
        return close == std::string_view::npos ? text.size() : close + 1;
    }
    const auto run = [&](auto&& belongs) {
        std::size_t length = 1;
        while (length < text.size() && belongs(text[length])) ++length;
        return length;
    };
    if (isBlank(first)) return run(isBlank);
    if (isDigit(first)) return run([](char c) { return isDigit(c) || c == '.'; });
    if (isWordByte(first)) return run(isWordByte);
    return 1;
}

class Translator {
public:
    Translator(std::string_view text, const Dialect& dialect) : dialect_(dialect) {
        while (!text.empty()) {
            const auto length = tokenLength(text);
            tokens_.push_back(text.substr(0, length));
            text.remove_prefix(length);
        }
    }

    Translation run() {
        levels_.emplace_back();
        for (at_ = 0; at_ < tokens_.size(); ++at_) step(tokens_[at_]);
        endTerm();
        if (!dialect_.lastTerm.empty()) lastTerm();
        endSelect();
        return {std::move(out_), parameters_};
    }

private:
    /// The order of rows that nothing else orders.
    void lastTerm() {
        if (level().ordering) return insert(std::string(", ").append(dialect_.lastTerm));
        if (!level().limit.empty()) return;
        const std::string groups =
            groupsBegin_ == 0 || compound_ ? "" : out_.substr(groupsBegin_, groupsEnd() - groupsBegin_);
        insert(std::string(" ORDER BY").append(groups.empty() ? " " : groups + ", ").append(dialect_.lastTerm));
    }

    std::size_t groupsEnd() const { return groupsEnd_ > groupsBegin_ ? groupsEnd_ : solidEnd_; }

    /// What is open between two parentheses.
    struct Level {
        std::string limit;      ///< the n of a TOP that has not been written yet
        bool ordering = false;  ///< within ORDER BY
        bool number = false;    ///< they enclose what a function makes a number of
        /// Where the CAST of the parentheses begins in `out_`.
        std::optional<std::size_t> cast;
        std::string longest;  ///< how many characters that CAST leaves; "" for all
    };

    void step(std::string_view token) {
        if (isBlank(token.front())) {
            out_ += token;
            return;
        }
        if (token == "(") return open();
        if (token == ")") return close();
        if (token == ",") return comma();
        if (token == ";") return end();
        if (token == "+") return join();
        if (joining_ && token == "-") refuseSum();
        if (isDigit(token.front())) return number(token);
        if (isMark(token.front()) || token == "?") return parameter(token.front());
        if (token.front() == '[') return quotedName(token);
        if (classOf(token.front()) == CharacterClass::Word) return word(token);
        if (token.front() == '"') requireAdmitted(token);
        emit(token);
    }

    void word(std::string_view token) {
        if (is(token, "dbo") && next(1) == ".") {
            ++at_;
            return;
        }
        if (is(token, "N") && beginsText(next(1))) return;
        if (joining_ && givesNumber(token) && nextSolid(1) == "(") refuseSum();
        if (is(token, "isnull") && nextSolid(1) == "(") return emit(dialect_.ifNull);
        if (is(token, "TOP") && isAnyOf(previous_, {"SELECT", "DISTINCT", "ALL"})) return top();
        if (is(token, "BY") && is(previous_, "ORDER")) level().ordering = true;
        if (is(token, "HAVING") && levels_.size() == 1) groupsEnd_ = solidEnd_;
        const bool groups = is(token, "BY") && is(previous_, "GROUP") && levels_.size() == 1;
        if (isAnyOf(token, {"UNION", "EXCEPT", "INTERSECT", "LIMIT"})) endSelect();
        if (isAnyOf(token, {"UNION", "EXCEPT", "INTERSECT"}) && levels_.size() == 1) compound_ = true;
        if (isAnyOf(token, {"ASC", "DESC"})) return direction(token);
        requireAdmitted(token);
        emit(token);
        if (is(token, "BY")) termOpen_ = false;
        if (groups) groupsBegin_ = solidEnd_;
        if (is(token, "AS") && level().cast) castType();
    }

    void requireAdmitted(std::string_view word) const {
        // WITH x(a, b) names columns.
        const bool called = nextSolid(1) == "(" && !isAnyOf(previous_, {"WITH", "RECURSIVE"});
        if (dialect_.admits && !dialect_.admits(word, called))
            refuse("La sentencia no se ejecuta: no se admite «" + std::string(word) + "».");
    }

    /// [x], of which a double quote may be part.
    void quotedName(std::string_view token) {
        const std::string name = '"' + text::replaced(token.substr(1, token.size() - 2), "\"", "\"\"") + '"';
        requireAdmitted(name);
        emit(name);
        previous_ = token;
    }

    void direction(std::string_view token) {
        const bool ordered = level().ordering && termOpen_;
        if (ordered) insert(dialect_.orderTerm);
        emit(token);
        if (ordered) insert(is(token, "ASC") ? dialect_.ascendingTerm : dialect_.descendingTerm);
        termOpen_ = false;
    }

    static bool beginsText(std::string_view token) {
        return !token.empty() && (token.front() == textMark || token.front() == '\'');
    }

    static bool beginsNumber(std::string_view token) { return !token.empty() && isDigit(token.front()); }

    /// Takes "TOP n" out; n is written where the select ends.
    void top() {
        const bool parted = nextSolid(1) == "(";
        if (!parted && !beginsNumber(nextSolid(1))) return emit("TOP");
        if (parted) takeSolid();
        if (!beginsNumber(nextSolid(1))) refuse("La consulta no dice con un número cuántas filas lleva TOP.");
        level().limit = takeSolid();
        if (parted && takeSolid() != ")") refuse("La consulta no dice con un número cuántas filas lleva TOP.");
        if (isAnyOf(nextSolid(1), {"PERCENT", "WITH"})) refuse("La consulta pide con TOP algo más que un número.");
    }

    void number(std::string_view token) {
        if (joining_) refuseSum();
        emit(token);
        numberBefore_ = true;
    }

    void join() {
        if (numberBefore_) refuseSum();
        emit(dialect_.join);
        joining_ = true;
    }

    [[noreturn]] static void refuseSum() { refuse("La consulta suma números con «+», que aquí une textos."); }

    /// The type of a CAST, in a word that all engines know.
    void castType() {
        const auto type = takeSolid();
        out_ += ' ';
        if (isAnyOf(type, {"VARCHAR", "NVARCHAR"})) {
            level().longest = nextSolid(1) == "(" ? castLength() : "30";
            return emit("TEXT");
        }
        const bool plain = nextSolid(1) == ")";
        if (plain && is(type, "TEXT")) return emit(type);
        if (plain && isAnyOf(type, {"INT", "INTEGER", "SMALLINT", "TINYINT", "BIGINT"})) return emit("BIGINT");
        if (plain && isAnyOf(type, {"FLOAT", "REAL"})) return emit("DOUBLE PRECISION");
        refuse("La consulta convierte un valor con CAST a un tipo que no se admite: " + std::string(type));
    }

    /// The n of "(n)"; "" for "(MAX)".
    std::string castLength() {
        takeSolid();
        const auto length = takeSolid();
        if ((!beginsNumber(length) && !is(length, "MAX")) || takeSolid() != ")")
            refuse("La consulta no dice con un número cuántos caracteres deja CAST.");
        return is(length, "MAX") ? std::string() : std::string(length);
    }

    void open() {
        Level inner;
        inner.number = givesNumber(previous_);
        if (is(previous_, "CAST")) inner.cast = solidEnd_ - previous_.size();
        emit("(");
        levels_.push_back(std::move(inner));
        termOpen_ = false;
    }

    void close() {
        endSelect();
        const Level closed = level();
        if (levels_.size() > 1) levels_.pop_back();
        emit(")");
        if (!closed.longest.empty()) {
            out_.insert(*closed.cast, "substr(");
            out_ += ",1," + closed.longest;
            emit(")");
        }
        numberBefore_ = closed.number;
    }

    void comma() {
        endTerm();
        emit(",");
        termOpen_ = false;
    }

    /// A semicolon says no more than the end does.
    void end() {
        if (!nextSolid(1).empty()) refuse("El texto contiene más de una sentencia.");
    }

    void endTerm() {
        if (level().ordering && termOpen_) insert(std::string(dialect_.orderTerm).append(dialect_.ascendingTerm));
        termOpen_ = false;
    }

    void endSelect() {
        endTerm();
        level().ordering = false;
        if (level().limit.empty()) return;
        out_ += " LIMIT " + level().limit;
        level().limit.clear();
    }

    void parameter(char mark) {
        if (joining_ && isNumberMark(mark)) refuseSum();
        emit(dialect_.parameter(mark, ++parameters_));
        previous_ = "?";
        numberBefore_ = isNumberMark(mark);
    }

    void emit(std::string_view token) {
        if (!out_.empty() && glued(out_.back(), token.front())) out_ += ' ';
        out_ += token;
        solidEnd_ = out_.size();
        termOpen_ = true;
        numberBefore_ = joining_ = false;
        previous_ = token;
    }

    /// Puts text behind the last token.
    void insert(std::string_view text) {
        out_.insert(solidEnd_, text);
        solidEnd_ += text.size();
    }

    /// A word right behind a number or a parameter would be read as part of it.
    bool glued(char before, char after) const {
        const bool number =
            previous_ == "?" || (!previous_.empty() && isDigit(previous_.front()) && isWordByte(before));
        return number && isWordByte(after);
    }

    std::string_view next(std::size_t ahead) const {
        return at_ + ahead < tokens_.size() ? tokens_[at_ + ahead] : std::string_view();
    }

    std::string_view nextSolid(std::size_t ahead) const {
        const auto token = next(ahead);
        return !token.empty() && isBlank(token.front()) ? next(ahead + 1) : token;
    }

    /// Goes on to the next token that is no blank; "" at the end.
    std::string_view takeSolid() {
        do {
            ++at_;
        } while (!next(0).empty() && isBlank(next(0).front()));
        return next(0);
    }

    Level& level() { return levels_.back(); }

    const Dialect& dialect_;
    std::vector<std::string_view> tokens_;
    std::size_t at_ = 0;
    std::string out_;
    std::size_t solidEnd_ = 0;     ///< where the last token that is no blank ends in `out_`
    std::size_t groupsBegin_ = 0;  ///< where the terms of the whole text's GROUP BY are in `out_`; 0 without any
    std::size_t groupsEnd_ = 0;    ///< not behind `groupsBegin_`: where the text ends
    std::string_view previous_;
    int parameters_ = 0;
    bool compound_ = false;      ///< several selects make up the text
    bool termOpen_ = false;      ///< something of an ORDER BY term has been written
    bool numberBefore_ = false;  ///< the operand written last is a number
    bool joining_ = false;       ///< + has been written last
    std::vector<Level> levels_;
};

}  // namespace

Translation translate(std::string_view text, const Dialect& dialect) { return Translator(text, dialect).run(); }

}  // namespace FendaMaestros::storage
