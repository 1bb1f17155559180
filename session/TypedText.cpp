#include "session/TypedText.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <string>
#include <vector>

#include "toolkit/Text.h"

namespace FendaMaestros::typed {

namespace {

template <class Value>
std::optional<Value> parsed(std::string_view digits) {
    Value value{};
    const auto read = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    return read.ec == std::errc() ? std::optional(value) : std::nullopt;
}

/// "1.234.567": a first group of one to three digits, and three in each further one.
bool isGrouped(std::string_view digits) {
    const auto first = digits.find('.');
    if (first == std::string_view::npos) return true;
    if (first < 1 || first > 3 || (digits.size() - first) % 4 != 0) return false;
    for (std::size_t at = first; at < digits.size(); at += 4)
        if (digits[at] != '.') return false;
    return true;
}

std::vector<std::string> dateParts(const std::string& text) {
    if (text::isNumericCode(text) && (text.size() == 6 || text.size() == 8))
        return {text.substr(0, 2), text.substr(2, 2), text.substr(4)};
    std::vector<std::string> parts(1);
    for (char c : text) {
        if (c == '/' || c == '-' || c == '.')
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

int fullYear(const std::string& digits) {
    const int year = std::stoi(digits);
    if (digits.size() == 4) return year;
    return year + (year < 30 ? 2000 : 1900);
}

}  // namespace

std::optional<Variant> number(std::string_view text) {
    const std::string trimmed = text::trim(text);
    const std::string_view unsignedPart = std::string_view(trimmed).substr(trimmed.starts_with('-') ? 1 : 0);
    const auto point = unsignedPart.find('.');
    if (!text::isNumericCode(unsignedPart.substr(0, point))) return std::nullopt;
    if (point == std::string_view::npos) return parsed<std::int64_t>(trimmed);
    if (!text::isNumericCode(unsignedPart.substr(point + 1))) return std::nullopt;
    return parsed<double>(trimmed);
}

std::optional<double> amount(std::string_view text) {
    const std::string trimmed = text::trim(text);
    const bool negative = trimmed.starts_with('-');
    const std::string_view magnitude = std::string_view(trimmed).substr(negative ? 1 : 0);

    auto mark = magnitude.find(',');
    if (mark == std::string_view::npos && !isGrouped(magnitude)) mark = magnitude.find('.');
    const std::string_view whole = magnitude.substr(0, mark);
    const std::string_view decimals = mark == std::string_view::npos ? std::string_view() : magnitude.substr(mark + 1);
    if (!isGrouped(whole)) return std::nullopt;

    const std::string units = text::replaced(whole, ".", "");
    const std::string digits = units + std::string(decimals);
    constexpr std::size_t exactDigits = 15;
    if (!text::isNumericCode(digits) || digits.size() > exactDigits) return std::nullopt;
    return parsed<double>((negative ? "-0" : "0") + units + "." + std::string(decimals));
}

std::optional<Date> date(std::string_view text) {
    const std::vector<std::string> parts = dateParts(text::trim(text));
    if (parts.size() != 3 || !std::ranges::all_of(parts, text::isNumericCode)) return std::nullopt;
    if (parts[0].size() > 2 || parts[1].size() > 2 || (parts[2].size() != 2 && parts[2].size() != 4))
        return std::nullopt;

    const Date date{fullYear(parts[2]), std::stoi(parts[1]), std::stoi(parts[0])};
    const std::chrono::year_month_day day(std::chrono::year(date.year),
                                          std::chrono::month(static_cast<unsigned>(date.month)),
                                          std::chrono::day(static_cast<unsigned>(date.day)));
    return day.ok() ? std::optional(date) : std::nullopt;
}

}  // namespace FendaMaestros::typed
