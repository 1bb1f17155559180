#include "taxid/Validacion.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

using text::isDigit;

constexpr std::string_view nifLetters = "TRWAGMYFPDXBNJZSQVHLCKE";
/// What makes a sum up to a multiple of ten, by the sum's last digit.
constexpr std::string_view controlDigits = "0987654321";
constexpr std::string_view controlLetters = "JIHGFEDCBA";

constexpr bool isForeign(char c) { return c >= 'X' && c <= 'Z'; }

/// Some of the capitals.
class LetterSet {
public:
    constexpr explicit LetterSet(std::string_view letters) {
        for (const char letter : letters) bits_ |= 1u << (letter - 'A');
    }
    constexpr bool contains(char c) const { return c >= 'A' && c <= 'Z' && (bits_ >> (c - 'A') & 1) != 0; }

private:
    std::uint32_t bits_ = 0;
};

constexpr LetterSet organisations("ABCDEFGHNPQSJUVWR");
constexpr LetterSet organisationsWithControlLetter("CNPQRSW");

/// What each byte becomes in a normal form, 0 for those that go. Nothing beyond ASCII stays, so that only ASCII letters
/// need to be made capitals.
constexpr std::array<char, 256> normalForms = [] {
    std::array<char, 256> forms{};
    for (char c = '0'; c <= '9'; ++c) forms[static_cast<unsigned char>(c)] = c;
    for (char c = 'A'; c <= '\\'; ++c) forms[static_cast<unsigned char>(c)] = c;
    for (char c = 'a'; c <= 'z'; ++c) forms[static_cast<unsigned char>(c)] = static_cast<char>(c - 'a' + 'A');
    return forms;
}();

/// The remainder modulo 23 of digits with the digit `leading` in front of them; nothing when one of them is no digit.
/// Exact for any number of digits: so many at a time as leave room for a remainder before them.
std::optional<std::size_t> remainder23(std::string_view digits, std::uint64_t leading = 0) {
    constexpr std::size_t atATime = 17;
    std::uint64_t value = leading;
    for (; !digits.empty(); digits.remove_prefix(std::min(atATime, digits.size()))) {
        for (const char c : digits.substr(0, atATime)) {
            const auto digit = static_cast<unsigned char>(c - '0');
            if (digit > 9) return std::nullopt;
            value = value * 10 + digit;
        }
        value %= 23;
    }
    return value;
}

/// Digits and behind them their letter. A NIE is one whose first letter counts as a digit: X as 0, Y as 1, Z as 2.
bool isPersonal(std::string_view text) {
    if (text.size() < 7) return false;
    const char letter = text.back();
    text.remove_suffix(1);
    std::uint64_t leading = 0;
    if (isForeign(text.front())) {
        leading = static_cast<std::uint64_t>(text.front() - 'X');
        text.remove_prefix(1);
    }
    const auto remainder = remainder23(text, leading);
    return remainder && nifLetters[*remainder] == letter;
}

/// What people put between the digits: signs and blanks, also those of word processors.
bool isSeparator(char32_t c) {
    if (c >= 0x80) return c == 0xA0 || (c >= 0x2000 && c <= 0x206F);
    const bool digit = c >= '0' && c <= '9';
    const bool letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    return !digit && !letter;
}

/// What the control makes up to a multiple of ten; nothing when one of the seven is no digit.
std::optional<std::size_t> organisationSum(std::string_view digits) {
    /// Twice a digit, its own two digits added up.
    constexpr std::array<std::size_t, 10> doubled{0, 2, 4, 6, 8, 1, 3, 5, 7, 9};
    std::size_t sum = 0;
    for (std::size_t i = 0; i < 7; ++i) {
        if (!isDigit(digits[i])) return std::nullopt;
        const auto digit = static_cast<std::size_t>(digits[i] - '0');
        sum += i % 2 == 0 ? doubled[digit] : digit;
    }
    return sum;
}

bool isOrganisation(std::string_view text) {
    if (text.size() != 9 || !organisations.contains(text.front())) return false;
    const auto sum = organisationSum(text.substr(1, 7));
    if (!sum) return false;
    const std::string_view controls =
        organisationsWithControlLetter.contains(text.front()) ? controlLetters : controlDigits;
    return controls[*sum % 10] == text.back();
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

/// Leaves the normal form in front; gives its size.
std::size_t normalize(char* text, std::size_t size) {
    const auto form = [](char c) { return normalForms[static_cast<unsigned char>(c)]; };
    const auto stays = [form](char c) { return form(c) == c && c != 0; };
    char* const end = text + size;
    char* kept = std::find_if_not(text, end, stays);
    for (const char* next = kept; next != end; ++next)
        if (const char c = form(*next)) *kept++ = c;
    return static_cast<std::size_t>(kept - text);
}

}  // namespace

std::string letraNif(std::string_view valor, std::string* mensaje) {
    const auto refuse = [mensaje](const char* reason) {
        if (mensaje) *mensaje = reason;
        return std::string();
    };
    if (valor.empty()) return refuse("No se ha introducido datos");
    if (text::length(valor) < 7) return refuse("No se puede calcular el NIF, faltan dígitos");
    const auto remainder = remainder23(valor);
    if (!remainder) return refuse("el dato introducido no es numérico");
    return std::string(1, nifLetters[*remainder]);
}

std::string conLetra(std::string_view typed) {
    std::u32string number = text::characters(typed);
    std::erase_if(number, isSeparator);
    if (!number.empty() && (number.back() < U'0' || number.back() > U'9')) number.pop_back();
    std::string digits;
    for (const char32_t digit : number) text::append(digits, digit);
    const std::string letter = letraNif(digits);
    return letter.empty() ? std::string(typed) : digits + letter;
}

void normalizarIdentificador(std::string& sValor) { sValor.resize(normalize(sValor.data(), sValor.size())); }

CifVerificado verificarCif(char* text, std::size_t size) {
    const std::string_view typed(text, size);
    // What passes as it was typed is in its normal form.
    if (isPersonal(typed) || isOrganisation(typed)) return {true, size};
    const std::string_view normal(text, normalize(text, size));
    if (normal.empty()) return {false, 0};
    const char first = normal.front();
    if (isDigit(first) || isForeign(first)) return {isPersonal(normal), normal.size()};
    if (normal.size() < 9) return {false, normal.size()};
    const bool spanish = normal.starts_with("ES");
    if (!spanish && !isDigit(normal[1])) return {isIntraCommunity(normal), normal.size()};
    if (!spanish) return {isOrganisation(normal), normal.size()};
    std::ranges::copy(normal.substr(2), text);
    const std::string_view number = normal.substr(0, normal.size() - 2);
    return {isOrganisation(number), number.size()};
}

bool verificarCif(std::string& sValor) {
    const auto [valid, size] = verificarCif(sValor.data(), sValor.size());
    if (size < sValor.size()) sValor.resize(size);
    return valid;
}

char nifLetter(std::string_view digits, char foreign) {
    const auto remainder = remainder23(digits, static_cast<std::uint64_t>(foreign - 'X'));
    return remainder ? nifLetters[*remainder] : '\0';
}

std::optional<OrganisationControl> organisationControl(std::string_view digits) {
    const auto sum = digits.size() == 7 ? organisationSum(digits) : std::nullopt;
    if (!sum) return std::nullopt;
    return OrganisationControl{controlDigits[*sum % 10], controlLetters[*sum % 10]};
}

bool hasControlLetter(char initial) { return organisationsWithControlLetter.contains(initial); }

}  // namespace FendaMaestros
