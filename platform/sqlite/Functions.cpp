#include "platform/sqlite/Functions.h"

#include <sqlite3.h>
#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <charconv>
#include <cmath>
#include <cstdint>
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

void year(sqlite3_context* context, int, sqlite3_value** arguments) {
    const auto text = textOf(arguments[0]);
    int value = 0;
    if (text.size() < 8 || std::from_chars(text.data(), text.data() + 4, value).ptr != text.data() + 4) return;
    sqlite3_result_int(context, value);
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

void like(sqlite3_context* context, int count, sqlite3_value** arguments) {
    if (isNull(arguments[0]) || isNull(arguments[1])) return;
    char32_t escape = end;
    if (count == 3) {
        auto text = textOf(arguments[2]);
        escape = nextFolded(text);
    }
    sqlite3_result_int(context, matches(textOf(arguments[0]), textOf(arguments[1]), escape));
}

/// --- sum

constexpr double unitsPerOne = 10000;
constexpr double largestExact = 9e14;

struct Sum {
    std::int64_t units;  ///< of 1/10000, while `inexact` is false
    std::int64_t whole;  ///< the sum of the whole numbers, while `fraction` is false
    double approximate;
    bool any, fraction, inexact;
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
    sum->any = true;
    sum->approximate += sqlite3_value_double(arguments[0]);
    if (type == SQLITE_INTEGER)
        add(*sum, std::int64_t{sqlite3_value_int64(arguments[0])});
    else
        add(*sum, sqlite3_value_double(arguments[0]));
}

void sumResult(sqlite3_context* context) {
    const auto* sum = static_cast<Sum*>(sqlite3_aggregate_context(context, 0));
    if (!sum || !sum->any) return;
    if (sum->inexact) return sqlite3_result_double(context, sum->approximate);
    if (!sum->fraction) return sqlite3_result_int64(context, sum->whole);
    sqlite3_result_double(context, static_cast<double>(sum->units) / unitsPerOne);
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
    define(database, "len", 1, len);
    define(database, "year", 1, year);
    define(database, "like", 2, like);
    define(database, "like", 3, like);
    define(database, "sum", 1, nullptr, sumStep, sumResult);
}

}  // namespace FendaMaestros::sqlite
