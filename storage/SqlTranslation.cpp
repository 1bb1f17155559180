#include "storage/SqlTranslation.h"

#include <optional>
#include <vector>

#include "storage/Characters.h"
#include "storage/TextScan.h"
#include "toolkit/Text.h"

namespace FendaMaestros::storage {

namespace {

bool is(std::string_view token, std::string_view keyword) { return text::equalIgnoringCase(token, keyword); }

bool isAnyOf(std::string_view token, std::initializer_list<std::string_view> keywords) {
    for (const auto keyword : keywords)
        if (is(token, keyword)) return true;
    return false;
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

    std::string run() {
        levels_.emplace_back();
        for (at_ = 0; at_ < tokens_.size(); ++at_) step(tokens_[at_]);
        endSelect();
        return std::move(out_);
    }

private:
    /// What is open between two parentheses.
    struct Level {
        std::string limit;      ///< the n of a TOP that has not been written yet
        bool ordering = false;  ///< within ORDER BY
    };

    void step(std::string_view token) {
        if (isBlank(token.front())) {
            out_ += token;
            return;
        }
        if (token == "(") return open();
        if (token == ")") return close();
        if (token == "," || token == ";") return separator(token);
        if (token == "+") return emit("||");
        if (token.front() == numberMark || token.front() == textMark || token == "?") return parameter(token.front());
        if (classOf(token.front()) == CharacterClass::Word) return word(token);
        emit(token);
    }

    void word(std::string_view token) {
        if (is(token, "dbo") && next(1) == ".") {
            ++at_;
            return;
        }
        if (is(token, "isnull") && nextSolid(1) == "(") return emit(dialect_.ifNull);
        if (is(token, "TOP") && is(previous_, "SELECT")) return top();
        if (is(token, "BY") && is(previous_, "ORDER")) level().ordering = true;
        if (isAnyOf(token, {"UNION", "EXCEPT", "INTERSECT", "LIMIT"})) endSelect();
        if (isAnyOf(token, {"ASC", "DESC"})) endTerm();
        emit(token);
        if (isAnyOf(token, {"ASC", "DESC", "BY"})) termOpen_ = false;
    }

    /// Takes "TOP n" out; n is written where the select ends.
    void top() {
        std::size_t skip = 1;
        while (at_ + skip < tokens_.size() && isBlank(tokens_[at_ + skip].front())) ++skip;
        if (!isDigit(next(skip).empty() ? ' ' : next(skip).front())) return emit("TOP");
        level().limit = next(skip);
        at_ += skip;
    }

    void open() {
        emit("(");
        levels_.emplace_back();
        termOpen_ = false;
    }

    void close() {
        endSelect();
        if (levels_.size() > 1) levels_.pop_back();
        emit(")");
    }

    void separator(std::string_view token) {
        endTerm();
        if (token == ";") endSelect();
        emit(token);
        termOpen_ = false;
    }

    void endTerm() {
        if (level().ordering && termOpen_) out_.insert(solidEnd_, dialect_.orderTerm);
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
        emit(dialect_.parameter(mark, ++parameters_));
        previous_ = "?";
    }

    void emit(std::string_view token) {
        if (!out_.empty() && glued(out_.back(), token.front())) out_ += ' ';
        out_ += token;
        solidEnd_ = out_.size();
        termOpen_ = true;
        previous_ = token;
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

    Level& level() { return levels_.back(); }

    const Dialect& dialect_;
    std::vector<std::string_view> tokens_;
    std::size_t at_ = 0;
    std::string out_;
    std::size_t solidEnd_ = 0;  ///< where the last token that is no blank ends in `out_`
    std::string_view previous_;
    int parameters_ = 0;
    bool termOpen_ = false;  ///< something of an ORDER BY term has been written
    std::vector<Level> levels_;
};

}  // namespace

std::string translate(std::string_view text, const Dialect& dialect) { return Translator(text, dialect).run(); }

}  // namespace FendaMaestros::storage
