#include "capi/Texts.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include "toolkit/Text.h"

namespace FendaMaestros::capi {

namespace {

/// Whether every byte is ASCII, eight at a time.
bool isAscii(std::string_view bytes) {
    constexpr std::uint64_t high = 0x8080808080808080;
    std::uint64_t seen = 0;
    while (bytes.size() >= sizeof seen) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, bytes.data(), sizeof eight);
        seen |= eight;
        bytes.remove_prefix(sizeof eight);
    }
    for (const char byte : bytes) seen |= static_cast<unsigned char>(byte);
    return (seen & high) == 0;
}

}  // namespace

std::string_view taken(const char* text) {
    if (!text) refuseArgument("Falta un texto.");
    const std::size_t size = ::strnlen(text, std::size_t{FENDA_TEXT_LIMIT} + 1);
    if (size > FENDA_TEXT_LIMIT) refuseArgument("Un texto es demasiado largo.");
    const std::string_view bytes(text, size);
    if (!isAscii(bytes) && !text::isUtf8(bytes)) refuseArgument("Un texto no es UTF-8.");
    return bytes;
}

std::string_view takenOrNone(const char* text) { return text ? taken(text) : std::string_view(); }

bool isText(std::string_view bytes) {
    if (std::memchr(bytes.data(), 0, bytes.size())) return false;
    return isAscii(bytes) || text::isUtf8(bytes);
}

char* given(std::string_view text) {
    auto* const copy = static_cast<char*>(std::malloc(text.size() + 1));
    if (!copy) throw std::bad_alloc();
    std::memcpy(copy, text.data(), text.size());
    copy[text.size()] = '\0';
    return copy;
}

void give(char** to, std::string_view text) {
    if (to) *to = given(text);
}

}  // namespace FendaMaestros::capi
