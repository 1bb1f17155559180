#include "toolkit/Variant.h"

#include <charconv>
#include <cmath>

namespace FendaMaestros {

namespace {

std::string realText(double value) {
    char digits[32];
    const auto end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    return {digits, end};
}

double leadingNumber(const std::string& text) {
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string::npos) return 0;
    double value = 0;
    std::from_chars(text.data() + first + (text[first] == '+'), text.data() + text.size(), value);
    return std::isfinite(value) ? value : 0;
}

std::int64_t rounded(double value) {
    constexpr double limit = 9.2e18;
    if (!(std::abs(value) < limit)) return 0;
    return std::llround(value);
}

}  // namespace

std::string Variant::text() const {
    if (const auto* text = std::get_if<std::string>(&storage_)) return *text;
    if (const auto* whole = std::get_if<std::int64_t>(&storage_)) return std::to_string(*whole);
    if (const auto* real = std::get_if<double>(&storage_)) return realText(*real);
    return {};
}

std::int64_t Variant::integer() const {
    if (const auto* whole = std::get_if<std::int64_t>(&storage_)) return *whole;
    return rounded(real());
}

double Variant::real() const {
    if (const auto* real = std::get_if<double>(&storage_)) return *real;
    if (const auto* whole = std::get_if<std::int64_t>(&storage_)) return static_cast<double>(*whole);
    if (const auto* text = std::get_if<std::string>(&storage_)) return leadingNumber(*text);
    return 0;
}

}  // namespace FendaMaestros
