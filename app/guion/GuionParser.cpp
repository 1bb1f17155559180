#include "app/guion/GuionParser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <stdexcept>
#include <utility>

#include "app/YesOrNo.h"
#include "toolkit/Keys.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

constexpr std::string_view blanks = " \t\r\f\v";

bool isBlank(char c) { return blanks.find(c) != std::string_view::npos; }

/// "=", "<>" (also written "!=") stand alone wherever they are.
std::size_t signLength(std::string_view text, std::size_t at) {
    if (text[at] == '=') return 1;
    const std::string_view two = text.substr(at, 2);
    return two == "<>" || two == "!=" ? 2 : 0;
}

bool isCharacter(unsigned code) { return code > 0 && code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF); }

bool isWholeNumber(std::string_view text) { return text::isNumericCode(text) && text.size() <= 9; }

constexpr std::array<std::pair<std::string_view, int>, 32> namedKeys{{
    {"intro", key::Enter},         {"entrar", key::Enter},      {"enter", key::Enter},    {"retorno", key::Enter},
    {"esc", key::Escape},          {"escape", key::Escape},     {"tab", key::Tab},        {"tabulador", key::Tab},
    {"arriba", key::Up},           {"abajo", key::Down},        {"izquierda", key::Left}, {"derecha", key::Right},
    {"inicio", key::Home},         {"home", key::Home},         {"fin", key::End},        {"end", key::End},
    {"repag", key::PageUp},        {"retropag", key::PageUp},   {"pageup", key::PageUp},  {"pgup", key::PageUp},
    {"avpag", key::PageDown},      {"pagedown", key::PageDown}, {"pgdn", key::PageDown},  {"supr", key::Delete},
    {"suprimir", key::Delete},     {"del", key::Delete},        {"delete", key::Delete},  {"retroceso", key::Backspace},
    {"backspace", key::Backspace}, {"espacio", key::Space},     {"space", key::Space},    {"barra", key::Space},
}};

int shiftNamed(std::string_view name) {
    if (name == "mayus" || name == "shift" || name == "mayusculas") return shift::Shift;
    if (name == "ctrl" || name == "control") return shift::Control;
    if (name == "alt") return shift::Alt;
    return shift::None;
}

int codeNamed(std::string_view name) {
    if (name.size() == 1 && key::ofCharacter(static_cast<unsigned char>(name[0])) != key::Other)
        return key::ofCharacter(static_cast<unsigned char>(name[0]));
    const auto named = std::ranges::find(namedKeys, name, &std::pair<std::string_view, int>::first);
    if (named != namedKeys.end()) return named->second;
    int number = 0;
    if (name.size() >= 2 && name.size() <= 3 && name[0] == 'f' && isWholeNumber(name.substr(1)))
        std::from_chars(name.data() + 1, name.data() + name.size(), number);
    return number >= 1 && number <= 12 ? key::F(number) : 0;
}

}  // namespace

KeyStroke keyStroke(std::string_view name) {
    const std::string folded = text::folded(name);
    std::string_view left = folded;
    KeyStroke stroke;
    for (auto plus = left.find('+'); plus != std::string_view::npos; plus = left.find('+')) {
        const int modifier = shiftNamed(left.substr(0, plus));
        if (!modifier) throw std::invalid_argument("no hay ninguna tecla \"" + std::string(name) + "\"");
        stroke.shift |= modifier;
        left.remove_prefix(plus + 1);
    }
    stroke.code = codeNamed(left);
    if (!stroke.code) throw std::invalid_argument("no hay ninguna tecla \"" + std::string(name) + "\"");
    return stroke;
}

// --- the words of a line

Words::Words(int line, std::string_view text) : line_(line) { split(text); }

void Words::split(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        if (isBlank(text[at])) {
            ++at;
        } else if (text[at] == '#') {
            return;
        } else if (text[at] == '"') {
            words_.push_back({quoted(text, ++at), true});
        } else if (const std::size_t length = signLength(text, at)) {
            words_.push_back({length == 1 ? "=" : "<>", false});
            at += length;
        } else {
            const std::size_t start = at;
            while (at < text.size() && !isBlank(text[at]) && text[at] != '"' && !signLength(text, at)) ++at;
            words_.push_back({std::string(text.substr(start, at - start)), false});
        }
    }
}

/// The text between quotes, from behind the first one; `at` ends behind the last one.
std::string Words::quoted(std::string_view text, std::size_t& at) const {
    std::string result;
    while (at < text.size()) {
        const char c = text[at++];
        if (c == '"') {
            if (at == text.size() || text[at] != '"') return result;
            ++at;
            result += '"';
        } else if (c != '\\') {
            result += c;
        } else if (at == text.size()) {
            break;
        } else if (text[at] == 'u' && at + 1 < text.size() && text[at + 1] == '{') {
            unsigned code = 0;
            const char* const end = text.data() + text.size();
            const auto read = std::from_chars(text.data() + at + 2, end, code, 16);
            if (read.ec != std::errc() || read.ptr == end || *read.ptr != '}' || !isCharacter(code))
                fail("\\u{...} lleva entre llaves el código de un carácter, en hexadecimal");
            text::append(result, static_cast<char32_t>(code));
            at = static_cast<std::size_t>(read.ptr - text.data()) + 1;
        } else {
            constexpr std::string_view letters = "nrt\"\\";
            constexpr std::string_view meanings = "\n\r\t\"\\";
            const auto meaning = letters.find(text[at]);
            if (meaning == std::string_view::npos)
                fail(std::string("\\") + text[at] + " no significa nada; una barra invertida se escribe \\\\");
            result += meanings[meaning];
            ++at;
        }
    }
    fail("faltan las comillas que cierran el texto");
}

const Words::Word& Words::read(std::string_view what) {
    if (atEnd()) fail("falta " + std::string(what));
    return words_[next_++];
}

bool Words::take(std::string_view keyword) {
    if (atEnd() || isQuoted() || text::folded(words_[next_].text) != keyword) return false;
    ++next_;
    return true;
}

std::string Words::keyword(std::string_view what) {
    const Word& word = read(what);
    if (word.quoted) fail("\"" + word.text + "\" está en el lugar de " + std::string(what));
    return text::folded(word.text);
}

std::string Words::text(std::string_view what) { return read(what).text; }

bool Words::isNumber() const { return !atEnd() && !isQuoted() && isWholeNumber(words_[next_].text); }

int Words::number(std::string_view what) {
    const std::string& digits = read(what).text;
    if (!isWholeNumber(digits)) fail("\"" + digits + "\" no es " + std::string(what) + ": debe ser un número");
    return std::stoi(digits);
}

bool Words::yesOrNo(std::string_view what) {
    const std::string word = keyword(what);
    if (const auto value = readYesOrNo(word)) return *value;
    fail("\"" + word + "\" no es sí ni no");
}

std::vector<std::string> Words::rest() {
    std::vector<std::string> texts;
    while (!atEnd()) texts.push_back(words_[next_++].text);
    return texts;
}

void Words::end() const {
    if (!atEnd()) fail("sobra \"" + words_[next_].text + "\" (un texto con blancos se escribe entre comillas)");
}

void Words::fail(const std::string& reason) const { throw GuionError{line_, reason}; }

// --- the whole script

std::vector<Command> parseGuion(std::istream& script,
                                const std::function<Command(int line, std::string_view text)>& parse) {
    std::vector<Command> commands;
    std::string line;
    for (int number = 1; std::getline(script, line); ++number) {
        if (!text::isUtf8(line)) throw GuionError{number, "no es texto UTF-8"};
        if (line.find('\0') != std::string::npos) throw GuionError{number, "tiene un carácter nulo"};
        std::string_view text = line;
        if (number == 1 && text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
        const auto first = text.find_first_not_of(blanks);
        if (first == std::string_view::npos || text[first] == '#') continue;
        text.remove_prefix(first);
        commands.push_back(parse(number, text.substr(0, text.find_last_not_of(blanks) + 1)));
    }
    return commands;
}

}  // namespace FendaMaestros
