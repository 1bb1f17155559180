#include "platform/sqlite/Functions.h"

#include <sqlite3.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/sqlite/Check.h"
#include "platform/sqlite/TextFunctions.h"

namespace FendaMaestros::sqlite {

namespace {

std::string_view textOf(sqlite3_value* value) {
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return bytes ? std::string_view(bytes, static_cast<std::size_t>(sqlite3_value_bytes(value))) : std::string_view();
}

bool isNull(sqlite3_value* value) { return sqlite3_value_type(value) == SQLITE_NULL; }

void len(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (!isNull(arguments[0])) sqlite3_result_int64(context, lengthOf(textOf(arguments[0])));
}

void year(sqlite3_context* context, int, sqlite3_value** arguments) {
    if (const auto value = yearOf(textOf(arguments[0]))) sqlite3_result_int(context, *value);
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

void like(sqlite3_context* context, int count, sqlite3_value** arguments) {
    if (isNull(arguments[0]) || isNull(arguments[1])) return;
    const auto escape = count == 3 ? textOf(arguments[2]) : std::string_view();
    sqlite3_result_int(context, isLike(textOf(arguments[1]), textOf(arguments[0]), escape));
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
