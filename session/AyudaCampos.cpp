#include "session/AyudaCampos.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <optional>

#include "toolkit/Format.h"
#include "toolkit/Keys.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

bool isDigit(int c) { return c >= '0' && c <= '9'; }

/// "1.234.567": a first group of one to three digits, and three in each further one.
bool isGrouped(std::string_view digits) {
    const auto first = digits.find('.');
    if (first == std::string_view::npos) return true;
    if (first < 1 || first > 3 || (digits.size() - first) % 4 != 0) return false;
    for (std::size_t at = first; at < digits.size(); at += 4)
        if (digits[at] != '.') return false;
    return true;
}

/// Takes the sign off.
bool takeMinus(std::string_view& number) {
    const bool negative = number.starts_with('-');
    if (negative) number.remove_prefix(1);
    return negative;
}

/// A Spanish amount: "1234,5", "1.234,50", "-7". A point that cannot part thousands is the decimal one: "12.5".
std::optional<double> readAmount(std::string_view typed) {
    const bool negative = takeMinus(typed);
    auto mark = typed.find(',');
    if (mark == std::string_view::npos && !isGrouped(typed)) mark = typed.find('.');
    const std::string_view whole = typed.substr(0, mark);
    const std::string_view decimals = mark == std::string_view::npos ? std::string_view() : typed.substr(mark + 1);
    if (!isGrouped(whole)) return std::nullopt;

    const std::string units = text::replaced(whole, ".", "");
    const std::string digits = units + std::string(decimals);
    constexpr std::size_t exactDigits = 15;
    if (!text::isNumericCode(digits) || digits.size() > exactDigits) return std::nullopt;

    const std::string number = (units.empty() ? "0" : units) + "." + std::string(decimals);
    double value = 0;
    std::from_chars(number.data(), number.data() + number.size(), value);
    return negative ? -value : value;
}

std::string shownAmount(const std::string& typed, const std::string& mask) {
    const std::optional<double> amount = readAmount(text::trim(typed));
    return amount ? format(*amount, mask) : typed;
}

/// Day, month and year as digits: "1/2/26", "1-2-2026", "01022026" or "010226".
std::vector<std::string> dateParts(const std::string& typed) {
    if (text::isNumericCode(typed) && (typed.size() == 6 || typed.size() == 8))
        return {typed.substr(0, 2), typed.substr(2, 2), typed.substr(4)};
    std::vector<std::string> parts(1);
    for (char c : typed) {
        if (c == '/' || c == '-' || c == '.')
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

/// Years of two digits lie between 1930 and 2029.
int fullYear(const std::string& digits) {
    const int year = std::stoi(digits);
    if (digits.size() == 4) return year;
    return year + (year < 30 ? 2000 : 1900);
}

std::optional<Date> readDate(const std::string& typed) {
    const std::vector<std::string> parts = dateParts(typed);
    if (parts.size() != 3 || !std::ranges::all_of(parts, text::isNumericCode)) return std::nullopt;
    if (parts[0].size() > 2 || parts[1].size() > 2 || (parts[2].size() != 2 && parts[2].size() != 4))
        return std::nullopt;

    const Date date{fullYear(parts[2]), std::stoi(parts[1]), std::stoi(parts[0])};
    const std::chrono::year_month_day day(std::chrono::year(date.year),
                                          std::chrono::month(static_cast<unsigned>(date.month)),
                                          std::chrono::day(static_cast<unsigned>(date.day)));
    return day.ok() ? std::optional(date) : std::nullopt;
}

std::string shownDate(const std::string& typed, const std::string& mask) {
    const std::optional<Date> date = readDate(text::trim(typed));
    return date ? date->text() : format(typed, mask);
}

}  // namespace

void AyudaCampos::EntrarCampo(TextBox& field, const std::string& /*text*/, int /*work*/) {
    field.BackColor = ColorFoco;
    field.AllSelected = true;
}

void AyudaCampos::SalirCampo(TextBox& field, const std::string& mask, int /*work*/) {
    field.BackColor = ColorNormal;
    field.AllSelected = false;
    if (mask.empty()) return;
    field.Text = mask == "dd/mm/yyyy" ? shownDate(field.Text, mask) : shownAmount(field.Text, mask);
}

void AyudaCampos::FiltrarTecla(TextBox& /*field*/, int& keyAscii, bool decimals, int /*work*/) {
    const bool control = keyAscii > 0 && keyAscii < key::Space;
    const bool ofAmounts = decimals && (keyAscii == '-' || keyAscii == '.');
    if (!control && !ofAmounts && !isDigit(keyAscii) && keyAscii != ',') keyAscii = 0;
}

std::int64_t AyudaCampos::chosenId(const std::string& result) {
    if (text::length(result) <= 2) return 0;
    return Variant(result.substr(0, result.find('\x01'))).integer();
}

}  // namespace FendaMaestros
