#include "toolkit/Text.h"

#include <algorithm>

namespace FendaMaestros::text {

namespace {

constexpr std::string_view blanks = " \t\r\n\v\f";

bool isContinuation(char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; }

std::size_t sequenceLength(unsigned char lead) {
    if (lead >= 0xF0) return 4;
    if (lead >= 0xE0) return 3;
    if (lead >= 0xC0) return 2;
    return 1;
}

struct Decoded {
    char32_t character;
    std::size_t bytes;
};

/// A byte that starts no whole sequence stands for itself.
Decoded decode(std::string_view utf8, std::size_t at) {
    const auto lead = static_cast<unsigned char>(utf8[at]);
    const std::size_t bytes = sequenceLength(lead);
    if (bytes == 1 || at + bytes > utf8.size()) return {lead, 1};
    char32_t character = lead & (0xFF >> (bytes + 1));
    for (std::size_t i = 1; i < bytes; ++i) {
        if (!isContinuation(utf8[at + i])) return {lead, 1};
        character = (character << 6) | (static_cast<unsigned char>(utf8[at + i]) & 0x3F);
    }
    return {character, bytes};
}

char32_t upper(char32_t c) {
    if (c >= 'a' && c <= 'z') return c - 32;
    if (c < 0xE0) return c;
    if (c <= 0xFE) return c == 0xF7 ? c : c - 32;
    if (c == 0xFF) return 0x178;
    // Latin Extended-A pairs a capital with the small letter behind it: even first, but for three stretches.
    const bool oddCapital = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
    if (c >= 0x100 && c <= 0x17E && c != 0x131 && c != 0x138 && c != 0x149)
        return (c % 2 == 1) == oddCapital ? c : c - 1;
    return c;
}

/// What folding makes of U+00C0 to U+00FF: a base letter, or '.' for what is no accented letter.
constexpr std::string_view latinBases = "aaaaaa.ceeeeiiii.nooooo.ouuuuy..aaaaaa.ceeeeiiii.nooooo.ouuuuy.y";
/// First byte of U+00C0 to U+00FF.
constexpr char latinLead = '\xC3';

}  // namespace

std::size_t length(std::string_view utf8) {
    std::size_t count = 0;
    for (std::size_t at = 0; at < utf8.size(); at += decode(utf8, at).bytes) ++count;
    return count;
}

std::string left(std::string_view utf8, std::size_t characters) {
    std::size_t at = 0;
    while (characters-- > 0 && at < utf8.size()) at += decode(utf8, at).bytes;
    return std::string(utf8.substr(0, at));
}

std::string trim(std::string_view utf8) {
    const auto first = utf8.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string() : trimEnd(utf8.substr(first));
}

std::string trimEnd(std::string_view utf8) { return std::string(utf8.substr(0, utf8.find_last_not_of(blanks) + 1)); }

std::string upper(std::string_view utf8) {
    std::string result;
    result.reserve(utf8.size());
    for (std::size_t at = 0; at < utf8.size();) {
        const Decoded next = decode(utf8, at);
        const char32_t capital = upper(next.character);
        if (capital == next.character)
            result.append(utf8, at, next.bytes);
        else
            append(result, capital);
        at += next.bytes;
    }
    return result;
}

std::string folded(std::string_view utf8) {
    std::string result;
    appendFolded(result, utf8);
    return result;
}

void appendFolded(std::string& to, std::string_view utf8) {
    const std::size_t before = to.size();
    to.resize(before + utf8.size());
    char* out = to.data() + before;
    for (std::size_t at = 0; at < utf8.size(); ++at) {
        const char byte = utf8[at];
        if (byte != latinLead || at + 1 == utf8.size() || !isContinuation(utf8[at + 1])) {
            *out++ = byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + 32) : byte;
            continue;
        }
        const char second = utf8[++at];
        const char base = latinBases[static_cast<unsigned char>(second) & 0x3F];
        if (base != '.') {
            *out++ = base;
        } else {
            *out++ = latinLead;
            *out++ = second == '\x86' ? '\xA6' : second;  // Æ to æ
        }
    }
    to.resize(static_cast<std::size_t>(out - to.data()));
}

void append(std::string& utf8, char32_t c) {
    const auto put = [&utf8](char32_t byte) { utf8.push_back(static_cast<char>(byte)); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | (c >> 6));
        put(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        put(0xE0 | (c >> 12));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    } else {
        put(0xF0 | (c >> 18));
        put(0x80 | ((c >> 12) & 0x3F));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    }
}

std::u32string characters(std::string_view utf8) {
    std::u32string result;
    for (std::size_t at = 0; at < utf8.size();) {
        const Decoded next = decode(utf8, at);
        result.push_back(next.character);
        at += next.bytes;
    }
    return result;
}

/// Written again, only a well-formed text is the same: not overlong sequences, nor single bytes.
bool isUtf8(std::string_view bytes) {
    std::string again;
    for (const char32_t character : characters(bytes)) {
        const bool surrogate = character >= 0xD800 && character <= 0xDFFF;
        if (surrogate || character > 0x10FFFF) return false;
        append(again, character);
    }
    return again == bytes;
}

bool isControl(char32_t character) {
    const bool separator = character == U'\u2028' || character == U'\u2029';
    return character < U' ' || (character >= 0x7F && character <= 0x9F) || separator;
}

std::string printable(std::string_view utf8) {
    if (std::ranges::all_of(utf8, [](char c) { return c >= ' ' && c < 127; })) return std::string(utf8);
    std::string row;
    for (const char32_t character : characters(utf8)) append(row, isControl(character) ? U' ' : character);
    return row;
}

std::u32string oneLine(const std::u32string& pasted) {
    std::u32string line;
    bool broken = false;
    for (const char32_t character : pasted) {
        if (isControl(character)) {
            broken = true;
            continue;
        }
        if (broken && !line.empty()) line += U' ';
        broken = false;
        line += character;
    }
    return line;
}

bool isNumericCode(std::string_view utf8) {
    return !utf8.empty() && std::ranges::all_of(utf8, [](char c) { return c >= '0' && c <= '9'; });
}

bool equalIgnoringCase(std::string_view a, std::string_view b) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return std::ranges::equal(a, b, {}, lower, lower);
}

std::string replaced(std::string_view utf8, std::string_view what, std::string_view by) {
    std::string result;
    std::size_t at = 0;
    for (auto found = utf8.find(what); found != std::string_view::npos; found = utf8.find(what, at)) {
        result.append(utf8, at, found - at).append(by);
        at = found + what.size();
    }
    return result.append(utf8, at);
}

}  // namespace FendaMaestros::text
