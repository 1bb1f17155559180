#include "ui/FileName.h"

#include <string_view>

#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

/// Of four bytes each they stay within the 255 bytes of the usual file systems.
constexpr std::size_t longest = 60;

bool isRefused(unsigned char c) {
    return c < ' ' || c == 127 || std::string_view("/\\:*?\"<>|").find(c) != std::string_view::npos;
}

}  // namespace

std::string fileNameFrom(const std::string& title, const std::string& otherwise) {
    std::string name;
    for (const char c : title) {
        const char kept = isRefused(static_cast<unsigned char>(c)) ? ' ' : c;
        if (kept != ' ' || !name.ends_with(' ')) name += kept;
    }
    name = text::left(text::trim(name), longest);
    const auto last = name.find_last_not_of(" .");
    const auto first = name.find_first_not_of(" .");
    return last == std::string::npos ? otherwise : name.substr(first, last + 1 - first);
}

}  // namespace FendaMaestros
