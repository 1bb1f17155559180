#include "app/CommandNif.h"

#include <array>

#include "app/StandardStreams.h"
#include "taxid/Explicacion.h"
#include "taxid/Validacion.h"

namespace FendaMaestros {

namespace {

constexpr std::size_t bufferSize = 65'536;
constexpr std::size_t shownOfTooLong = 40;

/// Verdicts, gathered until flush().
class Verdicts {
public:
    Verdicts(const ByteSink& write, NifOutput output) : write_(write), output_(output) {}

    void add(std::string& identifier) {
        if (output_ == NifOutput::Verdict)
            judge(identifier);
        else
            explain(identifier);
        if (text_.size() >= bufferSize) flush();
    }

    void flush() {
        if (!text_.empty()) write_(text_);
        text_.clear();
    }

    bool allValid() const { return allValid_; }

private:
    void judge(std::string& identifier) {
        const bool valid = verificarCif(identifier) && identifier.size() <= longestIdentifier;
        if (identifier.size() > longestIdentifier) identifier.replace(shownOfTooLong, std::string::npos, "…");
        text_ += identifier;
        text_ += valid ? "\tválido\n" : "\tno válido\n";
        allValid_ &= valid;
    }

    void explain(const std::string& identifier) {
        IdentifierExplanation explained = explainIdentifier(identifier);
        std::string& shown = explained.normalForm;
        if (shown.size() > longestIdentifier) {
            shown.replace(shownOfTooLong, std::string::npos, "…");
            explained.valid = explained.validToday = false;
        }
        allValid_ &= explained.valid;
        reason_.clear();
        appendReason(reason_, explained);
        if (output_ == NifOutput::Json)
            appendObject(explained);
        else
            appendColumns(explained);
    }

    void appendColumns(const IdentifierExplanation& explained) {
        text_ += explained.normalForm;
        text_ += explained.valid ? "\tválido" : "\tno válido";
        text_ += explained.validToday ? "\thoy válido\t" : "\thoy no válido\t";
        appendFullName(text_, explained);
        text_.append("\t").append(reason_).append("\t");
        appendRules(text_, explained);
        text_ += '\n';
    }

    void appendObject(const IdentifierExplanation& explained) {
        text_ += R"({"identificador":")";
        appendNormalForm(explained.normalForm);
        text_ += explained.valid ? R"(","valido":true,"valido_hoy":)" : R"(","valido":false,"valido_hoy":)";
        text_ += explained.validToday ? "true" : "false";
        appendMember("clase", [&] { appendFullName(text_, explained); });
        appendMember("control", [&] {
            if (explained.expected != '\0') text_ += explained.expected;
        });
        appendMember("motivo", [&] { text_ += reason_; });
        appendMember("norma", [&] { appendRules(text_, explained); });
        text_ += "}\n";
    }

    /// Of what JSON gives another form only the backslash is ever in a normal form.
    void appendNormalForm(std::string_view form) {
        for (const char c : form) {
            if (c == '\\') text_ += c;
            text_ += c;
        }
    }

    /// Null when `value` appends nothing.
    template <class Value>
    void appendMember(std::string_view name, Value value) {
        text_.append(",\"").append(name).append("\":\"");
        const std::size_t before = text_.size();
        value();
        if (text_.size() > before)
            text_ += '"';
        else
            text_.replace(before - 1, 1, "null");
    }

    const ByteSink& write_;
    const NifOutput output_;
    std::string reason_;
    std::string text_;
    bool allValid_ = true;
};

/// A line that comes in pieces. Signs and blanks do not make it too long; what lies behind the longest identifier goes.
class Line {
public:
    void append(std::string_view piece) {
        if (text_.size() > longestIdentifier) return;
        text_ += piece;
        if (text_.size() > longestIdentifier) normalizarIdentificador(text_);
    }

    std::string& text() { return text_; }
    void clear() { text_.clear(); }

private:
    std::string text_;
};

}  // namespace

bool checkIdentifiers(const std::vector<std::string>& identifiers, const ByteSink& write, NifOutput output) {
    Verdicts verdicts(write, output);
    for (std::string identifier : identifiers) verdicts.add(identifier);
    verdicts.flush();
    return verdicts.allValid();
}

bool checkIdentifiers(const ByteSource& read, const ByteSink& write, NifOutput output) {
    Verdicts verdicts(write, output);
    Line line;
    bool ended = true;
    std::array<char, bufferSize> buffer;
    while (const std::size_t got = read(buffer.data(), buffer.size())) {
        std::string_view rest(buffer.data(), got);
        for (std::size_t end; (end = rest.find('\n')) != std::string_view::npos; rest.remove_prefix(end + 1)) {
            line.append(rest.substr(0, end));
            verdicts.add(line.text());
            line.clear();
        }
        line.append(rest);
        ended = rest.empty();
        verdicts.flush();
    }
    if (!ended) verdicts.add(line.text());
    verdicts.flush();
    return verdicts.allValid();
}

int runNif(const std::vector<std::string>& identifiers, NifOutput output) {
    const bool allValid = identifiers.empty() ? checkIdentifiers(readInput, writeOutput, output)
                                              : checkIdentifiers(identifiers, writeOutput, output);
    return allValid ? 0 : 1;
}

}  // namespace FendaMaestros
