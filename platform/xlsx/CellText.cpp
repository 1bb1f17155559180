#include "platform/xlsx/CellText.h"

#include <algorithm>
#include <utility>

#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

constexpr std::size_t longest = 32767;

bool isPlain(unsigned char c) { return c >= ' ' && c < 127; }

std::string_view plainRun(std::string_view text) {
    const auto end = std::ranges::find_if_not(text, isPlain);
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

bool isContinuation(std::string_view text, std::size_t at) {
    return at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;
}

/// Bytes of the well-formed character that begins here, 0 when there is none.
std::size_t characterAt(std::string_view text, std::size_t at) {
    const auto lead = static_cast<unsigned char>(text[at]);
    const std::size_t size = lead < 0x80   ? 1
                             : lead < 0xC2 ? 0
                             : lead < 0xE0 ? 2
                             : lead < 0xF0 ? 3
                             : lead < 0xF5 ? 4
                                           : 0;
    for (std::size_t i = 1; i < size; ++i)
        if (!isContinuation(text, at + i)) return 0;
    if (size < 3) return size;
    const auto second = static_cast<unsigned char>(text[at + 1]);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool outside = (lead == 0xED && second > 0x9F) || (lead == 0xF4 && second > 0x8F);
    const bool noncharacter = lead == 0xEF && second == 0xBF && static_cast<unsigned char>(text[at + 2]) >= 0xBE;
    return overlong || outside || noncharacter ? 0 : size;
}

bool isHexDigit(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

/// "_xHHHH_"
bool beginsCode(std::string_view text) {
    return text.size() >= 7 && text.starts_with("_x") && text[6] == '_' &&
           std::ranges::all_of(text.substr(2, 4), isHexDigit);
}

bool isControl(char c) {
    const auto code = static_cast<unsigned char>(c);
    return (code < ' ' && c != '\n' && c != '\t') || code == 127;
}

}  // namespace

void toCellText(std::string_view text, std::string& cell) {
    if (text.size() <= longest && std::ranges::all_of(text, isPlain)) {
        cell.assign(text);
        return;
    }
    cell.clear();
    std::size_t units = 0;
    for (std::size_t at = 0; at < text.size() && units < longest;) {
        const std::string_view plain = plainRun(text.substr(at, longest - units));
        cell += plain;
        units += plain.size();
        at += plain.size();
        if (at == text.size()) return;

        const std::size_t size = characterAt(text, at);
        units += size == 4 ? 2 : 1;
        if (units > longest) return;
        if (size == 0)
            cell += "\uFFFD";
        else if (isControl(text[at]))
            cell += ' ';
        else
            cell += text.substr(at, size);
        at += std::max<std::size_t>(size, 1);
    }
}

void escapeCodes(std::string& cell) {
    if (cell.find("_x") == std::string::npos) return;
    const std::string text = std::exchange(cell, {});
    // The underscore at the end of one code may begin the next.
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (beginsCode(std::string_view(text).substr(at))) cell += "_x005F";
        cell += text[at];
    }
    cell = text::left(cell, longest);
}

}  // namespace FendaMaestros
