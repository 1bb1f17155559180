#include "platform/sqlite/TextFunctions.h"

#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <charconv>
#include <string>

namespace FendaMaestros::sqlite {

namespace {

/// The text without its first one or two digits and the slash behind them; "" when it begins otherwise.
std::string_view behindSlash(std::string_view text) {
    const auto slash = text.find('/');
    if (slash != 1 && slash != 2) return {};
    const bool digits = std::ranges::all_of(text.substr(0, slash), [](char c) { return c >= '0' && c <= '9'; });
    return digits ? text.substr(slash + 1) : std::string_view();
}

constexpr char32_t end = 0xffffffff;

/// The next character in small letters; `end` behind the last.
char32_t nextFolded(std::string_view& text) {
    if (text.empty()) return end;
    const auto first = static_cast<std::uint8_t>(text.front());
    if (first < 0x80) {
        text.remove_prefix(1);
        return first >= 'A' && first <= 'Z' ? first + 32 : first;
    }
    std::int32_t used = 0;
    UChar32 character = 0;
    U8_NEXT_OR_FFFD(reinterpret_cast<const std::uint8_t*>(text.data()), used, static_cast<std::int32_t>(text.size()),
                    character);
    text.remove_prefix(static_cast<std::size_t>(used));
    return static_cast<char32_t>(u_foldCase(character, U_FOLD_CASE_DEFAULT));
}

/// `escape` takes its wildcard meaning from the character behind it; `end` when there is none.
bool matches(std::string_view pattern, std::string_view text, char32_t escape) {
    std::string_view retryPattern, retryText;
    bool canRetry = false;
    for (;;) {
        auto restPattern = pattern, restText = text;
        char32_t wanted = nextFolded(restPattern);
        const bool literal = wanted != end && wanted == escape;
        if (literal) wanted = nextFolded(restPattern);
        if (wanted == '%' && !literal) {
            pattern = retryPattern = restPattern;
            retryText = text;
            canRetry = true;
            continue;
        }
        const char32_t found = nextFolded(restText);
        if (found == end && wanted == end) return true;
        const bool fits = found != end && wanted != end && (found == wanted || (wanted == '_' && !literal));
        if (fits) {
            pattern = restPattern;
            text = restText;
            continue;
        }
        if (!canRetry || nextFolded(retryText) == end) return false;
        pattern = retryPattern;
        text = retryText;
    }
}

/// The text with each letter and its accents in one character; `composed` is the room for it.
std::string_view withComposedAccents(std::string_view text, std::string& composed) {
    // Accents of their own, U+0300 to U+036F, begin with one of these bytes.
    if (text.find_first_of("\xCC\xCD") == std::string_view::npos) return text;
    UErrorCode status = U_ZERO_ERROR;
    const auto* form = icu::Normalizer2::getNFCInstance(status);
    if (U_FAILURE(status)) return text;
    icu::StringByteSink<std::string> sink(&composed);
    form->normalizeUTF8(0, {text.data(), static_cast<std::int32_t>(text.size())}, sink, nullptr, status);
    return U_FAILURE(status) ? text : std::string_view(composed);
}

}  // namespace

std::int64_t lengthOf(std::string_view text) {
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    std::int64_t characters = 0;
    for (const char c : text) characters += !U8_IS_TRAIL(static_cast<std::uint8_t>(c));
    return characters;
}

std::optional<int> yearOf(std::string_view text) {
    if (text.size() < 8) return std::nullopt;
    const auto written = text.find('/') < 3 ? behindSlash(behindSlash(text)) : text;
    int value = 0;
    if (written.size() < 4 || std::from_chars(written.data(), written.data() + 4, value).ptr != written.data() + 4)
        return std::nullopt;
    return value;
}

bool isLike(std::string_view text, std::string_view pattern, std::string_view escape) {
    const char32_t escaping = escape.empty() ? end : nextFolded(escape);
    std::string composedPattern, composedText;
    return matches(withComposedAccents(pattern, composedPattern), withComposedAccents(text, composedText), escaping);
}

}  // namespace FendaMaestros::sqlite
