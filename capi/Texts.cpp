#include "capi/Texts.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>

#include "toolkit/Text.h"

namespace FendaMaestros::capi {

namespace {

template <class Word>
Word load(const char* from) {
    Word word = 0;
    std::memcpy(&word, from, sizeof word);
    return word;
}

/// The bits that no ASCII has of bytes in words of one size; the last two may overlap.
template <class Word>
Word highBits(std::string_view bytes) {
    Word seen = load<Word>(bytes.data() + bytes.size() - sizeof(Word));
    for (std::size_t at = 0; at + sizeof(Word) < bytes.size(); at += sizeof(Word))
        seen |= load<Word>(bytes.data() + at);
    return seen & static_cast<Word>(0x8080808080808080);
}

bool isAscii(std::string_view bytes) {
    if (bytes.size() >= 8) return highBits<std::uint64_t>(bytes) == 0;
    if (bytes.size() >= 4) return highBits<std::uint32_t>(bytes) == 0;
    return bytes.empty() || highBits<std::uint8_t>(bytes) == 0;
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

void giveRequired(char** to, std::string_view text) {
    char*& place = required(to);
    place = given(text);
}

}  // namespace FendaMaestros::capi
