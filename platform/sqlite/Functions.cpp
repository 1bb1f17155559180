#include "platform/sqlite/Functions.h"

#include <sqlite3.h>
#include <unicode/bytestream.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/sqlite/Check.h"

namespace FendaMaestros::sqlite {

namespace {

std::string_view textOf(sqlite3_value* value) {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return bytes ? std::string_view(bytes, static_cast<std::size_t>(sqlite3_value_bytes(value))) : std::string_view();
}

bool isNull(sqlite3_value* value) { return sqlite3_value_type(value) == SQLITE_NULL; }

void len(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (isNull(arguments[0])) return;
    auto text = textOf(arguments[0]);
    while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
    sqlite3_int64 characters = 0;
    for (const char c : text) characters += !U8_IS_TRAIL(static_cast<std::uint8_t>(c));
    sqlite3_result_int64(context, characters);
}

/// The text without its first one or two digits and the slash behind them; "" when it begins otherwise.
std::string_view behindSlash(std::string_view text) {
    const auto slash = text.find('/');
    if (slash != 1 && slash != 2) return {};
    const bool digits = std::ranges::all_of(text.substr(0, slash), [](char c) { return c >= '0' && c <= '9'; });
    return digits ? text.substr(slash + 1) : std::string_view();
}

void year(sqlite3_context* context, int, sqlite3_value** arguments) {
    const auto text = textOf(arguments[0]);
    if (text.size() < 8) return;
    const auto written = text.find('/') < 3 ? behindSlash(behindSlash(text)) : text;
    int value = 0;
    if (written.size() < 4 || std::from_chars(written.data(), written.data() + 4, value).ptr != written.data() + 4)
        return;
    sqlite3_result_int(context, value);
}

/// --- join

bool isNumber(sqlite3_value* value) {
    return sqlite3_value_type(value) == SQLITE_INTEGER || sqlite3_value_type(value) == SQLITE_FLOAT;
}

/// The bytes of a text, without the zero that the engine would copy it for.
std::string_view bytesOf(sqlite3_value* value) {
    const auto* bytes = static_cast<const char*>(sqlite3_value_blob(value));
    return bytes ? std::string_view(bytes, static_cast<std::size_t>(sqlite3_value_bytes(value))) : std::string_view();
}

void join(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (isNumber(arguments[0]) || isNumber(arguments[1])) {
        sqlite3_result_error(context, "«+» une textos y no suma números", -1);
        return sqlite3_result_error_code(context, SQLITE_AUTH);
    }
    if (isNull(arguments[0]) || isNull(arguments[1])) return;
    const auto first = bytesOf(arguments[0]), second = bytesOf(arguments[1]);
    const auto size = first.size() + second.size();
    // The engine keeps its own copy in a register that has room from the row before.
    std::array<char, 256> little;
    if (size <= little.size()) {
        std::ranges::copy(second, std::ranges::copy(first, little.data()).out);
        return sqlite3_result_text64(context, little.data(), size, SQLITE_TRANSIENT, SQLITE_UTF8);
    }
    auto* joined = static_cast<char*>(sqlite3_malloc64(size));
    if (!joined) return sqlite3_result_error_nomem(context);
    std::ranges::copy(second, std::ranges::copy(first, joined).out);
    sqlite3_result_text64(context, joined, size, sqlite3_free, SQLITE_UTF8);
}

/// --- like

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

void like(sqlite3_context* context, int count, sqlite3_value** arguments) {
    if (isNull(arguments[0]) || isNull(arguments[1])) return;
    char32_t escape = end;
    if (count == 3) {
        auto text = textOf(arguments[2]);
        escape = nextFolded(text);
    }
    std::string pattern, text;
    sqlite3_result_int(context, matches(withComposedAccents(textOf(arguments[0]), pattern),
                                        withComposedAccents(textOf(arguments[1]), text), escape));
}

/// --- sum

constexpr double unitsPerOne = 10000;
constexpr double largestExact = 9e14;

struct Sum {
    std::int64_t units;  ///< of 1/10000, while `inexact` is false
    std::int64_t whole;  ///< the sum of the whole numbers, while `fraction` is false
    double approximate;
    std::int64_t count;
    bool fraction, inexact;
};

void add(Sum& sum, std::int64_t value) {
    std::int64_t units = 0;
    sum.inexact |= __builtin_add_overflow(sum.whole, value, &sum.whole);
    sum.inexact |= __builtin_mul_overflow(value, static_cast<std::int64_t>(unitsPerOne), &units) ||
                   __builtin_add_overflow(sum.units, units, &sum.units);
}

void add(Sum& sum, double value) {
    sum.fraction = true;
    if (!(std::abs(value) < largestExact)) sum.inexact = true;
    if (sum.inexact) return;
    sum.inexact = __builtin_add_overflow(sum.units, std::int64_t{std::llround(value * unitsPerOne)}, &sum.units);
}

void sumStep(sqlite3_context* context, int, sqlite3_value** arguments) {
    const int type = sqlite3_value_numeric_type(arguments[0]);
    if (type == SQLITE_NULL) return;
    auto* sum = static_cast<Sum*>(sqlite3_aggregate_context(context, sizeof(Sum)));
    if (!sum) return sqlite3_result_error_nomem(context);
    ++sum->count;
    sum->approximate += sqlite3_value_double(arguments[0]);
    if (type == SQLITE_INTEGER)
        add(*sum, std::int64_t{sqlite3_value_int64(arguments[0])});
    else
        add(*sum, sqlite3_value_double(arguments[0]));
}

/// Null when no value was added.
const Sum* summed(sqlite3_context* context) {
    const auto* sum = static_cast<Sum*>(sqlite3_aggregate_context(context, 0));
    return sum && sum->count > 0 ? sum : nullptr;
}

void sumResult(sqlite3_context* context) {
    const auto* sum = summed(context);
    if (!sum) return;
    if (sum->inexact) return sqlite3_result_double(context, sum->approximate);
    if (!sum->fraction) return sqlite3_result_int64(context, sum->whole);
    sqlite3_result_double(context, static_cast<double>(sum->units) / unitsPerOne);
}

void averageResult(sqlite3_context* context) {
    const auto* sum = summed(context);
    if (!sum) return;
    const auto count = static_cast<double>(sum->count);
    if (sum->inexact) return sqlite3_result_double(context, sum->approximate / count);
    sqlite3_result_double(context, static_cast<double>(sum->units) / (unitsPerOne * count));
}

void totalResult(sqlite3_context* context) {
    const auto* sum = summed(context);
    if (!sum) return sqlite3_result_double(context, 0);
    sqlite3_result_double(context, sum->inexact ? sum->approximate : static_cast<double>(sum->units) / unitsPerOne);
}

using Function = void (*)(sqlite3_context*, int, sqlite3_value**);

void define(sqlite3* database, const char* name, int arguments, Function function, Function step = nullptr,
            void (*result)(sqlite3_context*) = nullptr) {
    constexpr int flags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
    check(sqlite3_create_function_v2(database, name, arguments, flags, nullptr, function, step, result, nullptr),
          database);
}

}  // namespace

void registerFunctions(sqlite3* database) {
    define(database, joinOperator, 2, join);
    define(database, "len", 1, len);
    define(database, "year", 1, year);
    define(database, "like", 2, like);
    define(database, "like", 3, like);
    define(database, "sum", 1, nullptr, sumStep, sumResult);
    define(database, "avg", 1, nullptr, sumStep, averageResult);
    define(database, "total", 1, nullptr, sumStep, totalResult);
}

}  // namespace FendaMaestros::sqlite
