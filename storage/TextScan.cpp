#include "storage/TextScan.h"

#include <charconv>

#include "session/ErrorBd.h"
#include "storage/Characters.h"

namespace FendaMaestros::storage {

namespace {

[[noreturn]] void refuse(const char* sentence) { throw ErrorBd(ErrorBd::Kind::Refused, sentence); }

bool is(std::string_view word, std::string_view keyword) {
    if (word.size() != keyword.size()) return false;
    for (std::size_t i = 0; i < word.size(); ++i)
        if ((word[i] & ~0x20) != keyword[i]) return false;
    return true;
}

/// Whether 64 bits hold the number that digits spell.
bool isInteger(std::string_view digits) {
    std::int64_t value = 0;
    return std::from_chars(digits.data(), digits.data() + digits.size(), value).ec == std::errc();
}

class Scanner {
public:
    Scanner(std::string_view sql, Shape& shape) : sql_(sql), shape_(shape) {
        shape_.text.clear();
        shape_.literals.clear();
        shape_.text.reserve(sql.size());
    }

    void run() {
        while (position_ < sql_.size()) step();
        copyUpTo(position_);
    }

private:
    void step() {
        const char c = sql_[position_];
        switch (classOf(c)) {
            case CharacterClass::Word:
                return word();
            case CharacterClass::Digit:
                return number();
            case CharacterClass::Blank:
                ++position_;
                return;
            case CharacterClass::Control:
                refuse("La consulta contiene un carácter de control.");
            case CharacterClass::Other:
                return sign(c);
        }
    }

    void sign(char c) {
        if (c == '\'') return text();
        if (c == '[') return skipTo(']');
        if (c == '"') return skipTo('"');
        if (startsComment(c)) refuse("La consulta contiene un comentario.");
        if (c == '.' && isDigit(peek(1))) return number();
        if (c == '?' || c == ':' || c == '@' || c == '$') refuse("La consulta contiene parámetros.");
        if (c == '(') ++depth_;
        if (c == ')' && --depth_ < ordinalsDepth_) ordinalsDepth_ = none;
        ++position_;
    }

    bool startsComment(char c) const { return (c == '-' && peek(1) == '-') || (c == '/' && peek(1) == '*'); }

    void word() {
        const auto first = position_;
        while (position_ < sql_.size() && isWordByte(sql_[position_])) ++position_;
        const auto word = sql_.substr(first, position_ - first);
        if (is(word, "BY"))
            ordinalsDepth_ = depth_;
        else if (is(word, "TOP") || is(word, "LIMIT") || (isVariableText(word) && opensParenthesis()))
            keepNext_ = true;
        else if (is(word, "HAVING") || is(word, "UNION"))
            ordinalsDepth_ = none;
    }

    static bool isVariableText(std::string_view word) { return is(word, "VARCHAR") || is(word, "NVARCHAR"); }

    bool opensParenthesis() const {
        std::size_t ahead = 0;
        while (isBlank(peek(ahead))) ++ahead;
        return peek(ahead) == '(';
    }

    void number() {
        const auto first = position_;
        bool whole = true;
        const auto digits = [this] {
            while (isDigit(peek(0))) ++position_;
        };
        digits();
        if (peek(0) == '.') {
            whole = false;
            ++position_;
            digits();
        }
        const bool sign = peek(1) == '+' || peek(1) == '-';
        if ((peek(0) == 'e' || peek(0) == 'E') && isDigit(peek(sign ? 2 : 1))) {
            whole = false;
            position_ += sign ? 2 : 1;
            digits();
        }
        if (keepNext_ || ordinalsDepth_ != none) {
            keepNext_ = false;
            return;
        }
        const auto source = sql_.substr(first, position_ - first);
        if (whole && isInteger(source)) return cutOut(first, integerMark, {source, Literal::Kind::Integer});
        cutOut(first, realMark, {source, Literal::Kind::Real});
    }

    void text() {
        const auto first = position_;
        auto kind = Literal::Kind::Text;
        for (auto from = first + 1;; from = position_ + 2) {
            position_ = closing('\'', from);
            if (peek(1) != '\'') break;
            kind = Literal::Kind::QuotedText;
        }
        ++position_;
        cutOut(first, textMark, {sql_.substr(first + 1, position_ - first - 2), kind});
    }

    void skipTo(char end) { position_ = closing(end, position_ + 1) + 1; }

    std::size_t closing(char end, std::size_t from) const {
        const auto position = sql_.find(end, from);
        if (position == std::string_view::npos)
            throw ErrorBd(ErrorBd::Kind::Sql, "A la consulta le falta una comilla de cierre.");
        return position;
    }

    void cutOut(std::size_t first, char mark, Literal literal) {
        copyUpTo(first);
        shape_.text += mark;
        shape_.literals.push_back(literal);
        copied_ = position_;
    }

    void copyUpTo(std::size_t end) {
        shape_.text.append(sql_.data() + copied_, end - copied_);
        copied_ = end;
    }

    char peek(std::size_t ahead) const { return position_ + ahead < sql_.size() ? sql_[position_ + ahead] : '\0'; }

    static constexpr int none = -1000;

    std::string_view sql_;
    Shape& shape_;
    std::size_t position_ = 0, copied_ = 0;
    int depth_ = 0;
    int ordinalsDepth_ = none;  ///< depth of the ORDER BY or GROUP BY being read: its numbers name columns
    bool keepNext_ = false;
};

}  // namespace

void scan(std::string_view sql, Shape& shape) { Scanner(sql, shape).run(); }

bool beginsAsRead(std::string_view sql) {
    while (!sql.empty() && isBlank(sql.front())) sql.remove_prefix(1);
    std::size_t length = 0;
    while (length < sql.size() && isWordByte(sql[length])) ++length;
    const auto word = sql.substr(0, length);
    return is(word, "SELECT") || is(word, "WITH");
}

}  // namespace FendaMaestros::storage
