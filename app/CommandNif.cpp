#include "app/CommandNif.h"

#include <array>

#include "app/StandardStreams.h"
#include "taxid/Validacion.h"

namespace FendaMaestros {

namespace {

constexpr std::size_t bufferSize = 65'536;
constexpr std::size_t shownOfTooLong = 40;

/// Verdicts, gathered until flush().
class Verdicts {
public:
    explicit Verdicts(const ByteSink& write) : write_(write) {}

    void add(std::string& identifier) {
        const bool valid = verificarCif(identifier) && identifier.size() <= longestIdentifier;
        if (identifier.size() > longestIdentifier) identifier.replace(shownOfTooLong, std::string::npos, "…");
        text_ += identifier;
        text_ += valid ? "\tválido\n" : "\tno válido\n";
        allValid_ &= valid;
        if (text_.size() >= bufferSize) flush();
    }

    void flush() {
        if (!text_.empty()) write_(text_);
        text_.clear();
    }

    bool allValid() const { return allValid_; }

private:
    const ByteSink& write_;
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

bool checkIdentifiers(const std::vector<std::string>& identifiers, const ByteSink& write) {
    Verdicts verdicts(write);
    for (std::string identifier : identifiers) verdicts.add(identifier);
    verdicts.flush();
    return verdicts.allValid();
}

bool checkIdentifiers(const ByteSource& read, const ByteSink& write) {
    Verdicts verdicts(write);
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

int runNif(const std::vector<std::string>& identifiers) {
    const bool allValid =
        identifiers.empty() ? checkIdentifiers(readInput, writeOutput) : checkIdentifiers(identifiers, writeOutput);
    return allValid ? 0 : 1;
}

}  // namespace FendaMaestros
