#include "toolkit/Format.h"

#include <cmath>
#include <cstdio>

#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

bool isNumber(const Variant& value) {
    if (const auto* written = std::get_if<std::string>(&value.storage())) {
        const bool negative = written->starts_with('-');
        return text::isNumericCode(std::string_view(*written).substr(negative ? 1 : 0));
    }
    return !value.isNull();
}

std::string padded(std::int64_t number, std::size_t digits) {
    std::string magnitude = std::to_string(number < 0 ? -number : number);
    if (magnitude.size() < digits) magnitude.insert(0, digits - magnitude.size(), '0');
    return (number < 0 ? "-" : "") + magnitude;
}

std::string grouped(double number, std::size_t decimals) {
    char digits[400];
    std::snprintf(digits, sizeof digits, "%.*f", static_cast<int>(decimals), std::abs(number));
    std::string magnitude = digits;
    const bool zero = magnitude.find_first_not_of("0.,") == std::string::npos;
    if (decimals > 0) magnitude[magnitude.size() - decimals - 1] = ',';
    const std::size_t whole = decimals > 0 ? magnitude.size() - decimals - 1 : magnitude.size();
    for (std::size_t at = whole; at > 3; at -= 3) magnitude.insert(at - 3, 1, '.');
    return (number < 0 && !zero ? "-" : "") + magnitude;
}

/// "2026-11-22" and anything behind it to "22/11/2026".
std::string spanishDate(const std::string& iso) {
    const bool fits = iso.size() >= 10 && iso[4] == '-' && iso[7] == '-';
    return fits ? iso.substr(8, 2) + "/" + iso.substr(5, 2) + "/" + iso.substr(0, 4) : iso;
}

}  // namespace

std::string format(const Variant& value, std::string_view mask) {
    if (mask.empty() || value.isNull()) return value.text();
    if (mask == "dd/mm/yyyy") return spanishDate(value.text());
    if (!isNumber(value)) return value.text();

    const auto last = mask.find_last_of("0#");
    if (last == std::string_view::npos) return value.text();
    const std::string_view digits = mask.substr(0, last + 1);
    const std::string tail(mask.substr(last + 1));
    if (digits.find_first_not_of('0') == std::string_view::npos) return padded(value.integer(), digits.size()) + tail;
    const auto point = digits.find('.');
    return grouped(value.real(), point == std::string_view::npos ? 0 : digits.size() - point - 1) + tail;
}

std::string counted(int count, std::string_view one, std::string_view many) {
    return format(count, "#,##0") + " " + std::string(count == 1 ? one : many);
}

}  // namespace FendaMaestros
