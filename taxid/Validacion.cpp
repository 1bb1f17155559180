#include "taxid/Validacion.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

constexpr std::string_view nifLetters = "TRWAGMYFPDXBNJZSQVHLCKE";
constexpr std::string_view organisationLetters = "ABCDEFGHNPQSJUVWR";
constexpr std::string_view organisationsWithControlLetter = "CNPQRSW";
constexpr std::string_view controlLetters = "JABCDEFGHI";

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool isDigits(std::string_view text) { return std::ranges::all_of(text, isDigit); }
constexpr bool contains(std::string_view letters, char c) { return letters.find(c) != std::string_view::npos; }

/// The letter of the digits with the digit `leading` in front of them. Exact for any number of digits: the value is
/// brought down to its remainder before it grows out of its 64 bits.
char nifLetter(std::string_view digits, std::uint64_t leading = 0) {
    constexpr std::uint64_t tooBig = 100'000'000'000'000'000;
    std::uint64_t value = leading;
    for (const char digit : digits) {
        if (value >= tooBig) value %= 23;
        value = value * 10 + static_cast<std::uint64_t>(digit - '0');
    }
    return nifLetters[value % 23];
}

/// Everything beyond ASCII goes, so that only ASCII letters need to be made capitals.
void normalise(std::string& text) {
    std::size_t kept = 0;
    for (char c : text) {
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        if (isDigit(c) || (c >= 'A' && c <= '\\')) text[kept++] = c;
    }
    text.resize(kept);
}

/// Digits and behind them their letter. A NIE is one whose first letter counts as a digit: X as 0, Y as 1, Z as 2.
bool isPersonal(std::string_view text) {
    if (text.size() < 7) return false;
    const bool foreign = !isDigit(text.front());
    const std::string_view digits = text.substr(foreign, text.size() - 1 - foreign);
    return isDigits(digits) &&
           nifLetter(digits, foreign ? static_cast<std::uint64_t>(text.front() - 'X') : 0) == text.back();
}

char controlOf(char organisation, std::string_view digits) {
    int sum = 0;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        const int digit = digits[i] - '0';
        const int doubled = digit * 2;
        sum += i % 2 == 0 ? doubled / 10 + doubled % 10 : digit;
    }
    const int control = (10 - sum % 10) % 10;
    return contains(organisationsWithControlLetter, organisation) ? controlLetters[static_cast<std::size_t>(control)]
                                                                  : static_cast<char>('0' + control);
}

bool isOrganisation(std::string_view text) {
    if (text.size() != 9 || !contains(organisationLetters, text.front())) return false;
    const std::string_view digits = text.substr(1, 7);
    return isDigits(digits) && controlOf(text.front(), digits) == text.back();
}

/// Countries whose numbers have one length, the two letters included; those of others are taken as they come.
bool isIntraCommunity(std::string_view text) {
    struct Country {
        std::string_view prefix;
        std::size_t length;
    };
    static constexpr std::array countries{
        Country{"DK", 10}, Country{"PT", 11}, Country{"DE", 11}, Country{"EL", 11}, Country{"GB", 11},
        Country{"BE", 11}, Country{"CY", 11}, Country{"FR", 13}, Country{"IT", 13}, Country{"SE", 14},
    };
    const auto country = std::ranges::find(countries, text.substr(0, 2), &Country::prefix);
    return country == countries.end() || text.size() == country->length;
}

}  // namespace

std::string letraNif(std::string_view valor, std::string* mensaje) {
    const auto refuse = [mensaje](const char* reason) {
        if (mensaje) *mensaje = reason;
        return std::string();
    };
    if (valor.empty()) return refuse("No se ha introducido datos");
    if (text::length(valor) < 7) return refuse("No se puede calcular el NIF, faltan dígitos");
    if (!isDigits(valor)) return refuse("el dato introducido no es numérico");
    return std::string(1, nifLetter(valor));
}

bool verificarCif(std::string& sValor) {
    normalise(sValor);
    if (sValor.empty()) return false;
    const char first = sValor.front();
    if (isDigit(first) || (first >= 'X' && first <= 'Z')) return isPersonal(sValor);
    if (sValor.size() < 9) return false;
    const bool spanish = sValor.starts_with("ES");
    if (!spanish && !isDigit(sValor[1])) return isIntraCommunity(sValor);
    if (spanish) sValor.erase(0, 2);
    return isOrganisation(sValor);
}

}  // namespace FendaMaestros
