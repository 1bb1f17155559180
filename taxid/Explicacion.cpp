#include "taxid/Explicacion.h"

#include <algorithm>
#include <array>

#include "taxid/Validacion.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

using text::isDigit;
using enum IdentifierFault;

constexpr std::size_t longestShown = 40;
constexpr std::size_t digitsOfPerson = 8;
constexpr std::size_t digitsBehindLetter = 7;

constexpr std::string_view personRule = "Real Decreto 1065/2007, artículo 19";
constexpr std::string_view foreignerRule = "Real Decreto 1065/2007, artículo 20; Orden INT/2058/2008";
constexpr std::string_view withoutNieRule = "Real Decreto 1065/2007, artículo 20";
constexpr std::string_view organisationRule = "Real Decreto 1065/2007, artículo 22; Orden EHA/451/2008";
constexpr std::string_view unionRule = "Directiva 2006/112/CE, artículos 214 y 215; formas publicadas en VIES";
constexpr std::string_view northernIrelandRule = "Directiva 2006/112/CE, artículo 215; Directiva (UE) 2020/1756";
constexpr std::string_view spanishPrefixRule =
    "Real Decreto 1065/2007, artículo 25; Directiva 2006/112/CE, artículo 215";

/// The letters of Orden EHA/451/2008.
struct Organisation {
    char letter;
    std::string_view name;
};
constexpr std::array organisations{
    Organisation{'A', "CIF de una sociedad anónima"},
    Organisation{'B', "CIF de una sociedad de responsabilidad limitada"},
    Organisation{'C', "CIF de una sociedad colectiva"},
    Organisation{'D', "CIF de una sociedad comanditaria"},
    Organisation{'E', "CIF de una comunidad de bienes u otra entidad sin personalidad jurídica"},
    Organisation{'F', "CIF de una sociedad cooperativa"},
    Organisation{'G', "CIF de una asociación"},
    Organisation{'H', "CIF de una comunidad de propietarios"},
    Organisation{'J', "CIF de una sociedad civil"},
    Organisation{'N', "CIF de una entidad extranjera"},
    Organisation{'P', "CIF de una corporación local"},
    Organisation{'Q', "CIF de un organismo público"},
    Organisation{'R', "CIF de una congregación o institución religiosa"},
    Organisation{'S', "CIF de un órgano de la Administración"},
    Organisation{'U', "CIF de una unión temporal de empresas"},
    Organisation{'V', "CIF de una entidad de otro tipo"},
    Organisation{'W', "CIF de un establecimiento permanente de una entidad no residente"},
};
/// No published rule says whether the control of these is a digit or a letter.
constexpr std::string_view withEitherControl = "CDFGJUV";

struct Country {
    std::string_view prefix;
    std::string_view name;
    std::string_view behind;  ///< what stands behind the prefix, in words
    /// Digits behind the prefix, when there are no `forms`.
    std::size_t least = 0, most = 0;
    /// The forms of what stands there, parted by "|": d a digit, l a letter, x either, others themselves.
    std::string_view forms = {};
};
constexpr std::array countries{
    Country{"AT", "Austria", "una U y ocho cifras", 0, 0, "Udddddddd"},
    Country{"BE", "Bélgica", "diez cifras, la primera 0 o 1", 0, 0, "0ddddddddd|1ddddddddd"},
    Country{"BG", "Bulgaria", "nueve o diez cifras", 9, 10},
    Country{"CY", "Chipre", "ocho cifras y una letra", 0, 0, "ddddddddl"},
    Country{"CZ", "Chequia", "de ocho a diez cifras", 8, 10},
    Country{"DE", "Alemania", "nueve cifras", 9, 9},
    Country{"DK", "Dinamarca", "ocho cifras", 8, 8},
    Country{"EE", "Estonia", "nueve cifras", 9, 9},
    Country{"EL", "Grecia", "nueve cifras", 9, 9},
    Country{"FI", "Finlandia", "ocho cifras", 8, 8},
    Country{"FR", "Francia", "dos caracteres y nueve cifras", 0, 0, "xxddddddddd"},
    Country{"HR", "Croacia", "once cifras", 11, 11},
    Country{"HU", "Hungría", "ocho cifras", 8, 8},
    Country{"IE", "Irlanda", "siete cifras y una o dos letras", 0, 0, "dxdddddl|dddddddll"},
    Country{"IT", "Italia", "once cifras", 11, 11},
    Country{"LT", "Lituania", "nueve o doce cifras", 0, 0, "ddddddddd|dddddddddddd"},
    Country{"LU", "Luxemburgo", "ocho cifras", 8, 8},
    Country{"LV", "Letonia", "once cifras", 11, 11},
    Country{"MT", "Malta", "ocho cifras", 8, 8},
    Country{"NL", "Países Bajos", "nueve caracteres, una B y otros dos", 0, 0, "xxxxxxxxxBxx"},
    Country{"PL", "Polonia", "diez cifras", 10, 10},
    Country{"PT", "Portugal", "nueve cifras", 9, 9},
    Country{"RO", "Rumanía", "de dos a diez cifras", 2, 10},
    Country{"SE", "Suecia", "doce cifras", 12, 12},
    Country{"SI", "Eslovenia", "ocho cifras", 8, 8},
    Country{"SK", "Eslovaquia", "diez cifras", 10, 10},
};
constexpr Country northernIreland{
    "XI", "Irlanda del Norte", "nueve o doce cifras", 0, 0, "ddddddddd|dddddddddddd|GDddd|HAddd"};

bool isLetter(char c) { return c >= 'A' && c <= 'Z'; }

bool fits(char c, char form) {
    if (form == 'd') return isDigit(c);
    if (form == 'l') return isLetter(c);
    if (form == 'x') return isDigit(c) || isLetter(c);
    return c == form;
}

bool hasForm(std::string_view number, const Country& country) {
    if (country.forms.empty())
        return number.size() >= country.least && number.size() <= country.most && std::ranges::all_of(number, isDigit);
    for (std::string_view rest = country.forms; !rest.empty();) {
        const std::string_view form = rest.substr(0, rest.find('|'));
        if (std::ranges::equal(number, form, fits)) return true;
        rest.remove_prefix(std::min(form.size() + 1, rest.size()));
    }
    return false;
}

/// The country whose prefix begins a text; null for none.
const Country* countryOf(std::string_view text) {
    const auto found = std::ranges::find(countries, text.substr(0, 2), &Country::prefix);
    return found == countries.end() ? nullptr : &*found;
}

std::size_t digitsAt(std::string_view text) {
    return static_cast<std::size_t>(std::ranges::find_if_not(text, isDigit) - text.begin());
}

/// Digits and their letter; `count` is how many digits there are today.
void judgeLetter(IdentifierExplanation& to, std::string_view number, std::size_t count, char foreign = 'X') {
    const std::size_t digits = digitsAt(number);
    const std::string_view behind = number.substr(digits);
    to.fault = Form;
    if (behind.size() > 1 || digits > count || (!behind.empty() && !isLetter(behind.front()))) return;
    const bool complete = digits == count;
    const bool person = to.kind == IdentifierKind::Person;
    const bool lacksZeros = person && digits >= (behind.empty() ? count - 1 : count - 2);
    if (!complete && !lacksZeros) return;
    to.expected = nifLetter(number.substr(0, digits), foreign);
    if (behind.empty())
        to.fault = ControlMissing;
    else if (behind.front() != to.expected)
        to.fault = ControlWrong;
    else
        to.fault = complete ? None : ShortNumber;
}

void judgePerson(IdentifierExplanation& to, std::string_view number) {
    to.kind = IdentifierKind::Person;
    to.name = "NIF de una persona con DNI";
    to.rule = personRule;
    judgeLetter(to, number, digitsOfPerson);
}

void judgeForeigner(IdentifierExplanation& to, std::string_view number) {
    to.kind = IdentifierKind::Foreigner;
    to.name = "NIE, NIF de una persona extranjera";
    to.rule = foreignerRule;
    judgeLetter(to, number.substr(1), digitsBehindLetter, number.front());
}

void judgeSpecialPerson(IdentifierExplanation& to, std::string_view number) {
    to.kind = IdentifierKind::SpecialPerson;
    const char letter = number.front();
    to.rule = letter == 'M' ? withoutNieRule : personRule;
    to.name = letter == 'K'   ? "NIF de una persona española menor de catorce años sin DNI"
              : letter == 'L' ? "NIF de una persona española residente en el extranjero sin DNI"
                              : "NIF de una persona extranjera sin NIE";
    judgeLetter(to, number.substr(1), digitsBehindLetter);
}

void judgeOrganisation(IdentifierExplanation& to, std::string_view number, const Organisation& organisation) {
    to.kind = IdentifierKind::Organisation;
    to.name = organisation.name;
    to.rule = organisationRule;
    to.fault = Form;
    const std::string_view digits = number.substr(1, digitsBehindLetter);
    const std::string_view behind = number.substr(std::min(number.size(), 1 + digitsBehindLetter));
    const auto control = organisationControl(digits);
    if (!control || behind.size() > 1) return;
    const bool letter = hasControlLetter(organisation.letter);
    to.expected = letter ? control->letter : control->digit;
    const char other = letter ? control->digit : control->letter;
    if (behind.empty())
        to.fault = ControlMissing;
    else if (behind.front() == to.expected)
        to.fault = None;
    else
        to.fault = behind.front() == other && withEitherControl.find(organisation.letter) != std::string_view::npos
                       ? None
                       : ControlWrong;
}

void judgeCountry(IdentifierExplanation& to, std::string_view number, const Country& country) {
    to.kind = IdentifierKind::IntraCommunity;
    to.name = "número intracomunitario";
    to.country = country.name;
    to.rule = &country == &northernIreland ? northernIrelandRule : unionRule;
    to.fault = hasForm(number.substr(2), country) ? None : Form;
}

void judgeFormerPrefix(IdentifierExplanation& to, std::string_view country) {
    to.kind = IdentifierKind::IntraCommunity;
    to.name = "número intracomunitario";
    to.country = country;
    to.rule = unionRule;
    to.fault = FormerPrefix;
}

void judge(IdentifierExplanation& to, std::string_view number);

/// What begins with two letters. Behind ES there is no second prefix.
void judgePrefix(IdentifierExplanation& to, std::string_view number) {
    if (!to.prefixRule.empty()) return;
    if (number.starts_with("ES")) {
        to.country = "España";
        to.prefixRule = spanishPrefixRule;
        return judge(to, number.substr(2));
    }
    if (const Country* const country = countryOf(number)) return judgeCountry(to, number, *country);
    if (number.starts_with("GB")) return judgeFormerPrefix(to, "Reino Unido");
    if (number.starts_with("GR")) return judgeFormerPrefix(to, "Grecia");
    to.kind = std::ranges::any_of(number, isDigit) ? IdentifierKind::OtherCountry : IdentifierKind::Unknown;
    to.fault = Form;
}

void judge(IdentifierExplanation& to, std::string_view number) {
    to.fault = Form;
    if (number.empty()) return;
    const char first = number.front();
    if (isDigit(first)) return judgePerson(to, number);
    if (to.prefixRule.empty() && number.starts_with("XI") && hasForm(number.substr(2), northernIreland))
        return judgeCountry(to, number, northernIreland);
    if (first >= 'X' && first <= 'Z') return judgeForeigner(to, number);
    to.kind = IdentifierKind::Unknown;
    if (number.size() < 2) return;
    if (isLetter(first) && isLetter(number[1])) return judgePrefix(to, number);
    if (first >= 'K' && first <= 'M') return judgeSpecialPerson(to, number);
    const auto organisation = std::ranges::find(organisations, first, &Organisation::letter);
    if (organisation != organisations.end()) judgeOrganisation(to, number, *organisation);
}

std::string_view formInWords(const IdentifierExplanation& explained) {
    switch (explained.kind) {
        case IdentifierKind::Person:
            return "ocho cifras y una letra";
        case IdentifierKind::Foreigner:
        case IdentifierKind::SpecialPerson:
            return "una letra, siete cifras y otra letra";
        case IdentifierKind::Organisation:
            return "una letra, siete cifras y un carácter de control";
        default:
            return {};
    }
}

void appendFormReason(std::string& to, const IdentifierExplanation& explained) {
    const std::string_view prefix = std::string_view(explained.normalForm).substr(0, 2);
    if (explained.kind == IdentifierKind::Nothing) {
        to += "no hay ningún identificador";
    } else if (explained.kind == IdentifierKind::OtherCountry) {
        to.append("ningún país de la Unión Europea tiene el prefijo ").append(prefix);
    } else if (const std::string_view words = formInWords(explained); !words.empty()) {
        to.append("debería tener ").append(words);
    } else if (const Country* const country = countryOf(prefix)) {
        to.append("detrás de ").append(prefix).append(" debería haber ").append(country->behind);
    } else {
        to += "no es un NIF, un NIE ni un número intracomunitario";
    }
}

void appendWhyOnlyToday(std::string& to, const IdentifierExplanation& explained) {
    to += "hoy es correcto, aunque la comprobación ";
    if (explained.kind == IdentifierKind::SpecialPerson)
        to += "no admite la inicial ", to += explained.normalForm.front();
    else if (explained.kind == IdentifierKind::Organisation)
        to += "espera ", to += explained.expected;
    else
        to += explained.prefixRule.empty() ? "no admite esta forma" : "no lo admite con el prefijo ES";
}

}  // namespace

IdentifierExplanation explainIdentifier(std::string_view typed) {
    IdentifierExplanation explained;
    std::string number(typed);
    normalizarIdentificador(number);
    explained.normalForm = number;
    explained.valid = verificarCif(explained.normalForm);
    judge(explained, number);
    explained.validToday = explained.fault == None;
    if (explained.validToday && !explained.valid) explained.fault = NoneToday;
    return explained;
}

void appendFullName(std::string& to, const IdentifierExplanation& explained) {
    to += explained.name;
    if (!explained.name.empty() && !explained.country.empty())
        to.append(explained.prefixRule.empty() ? " de " : ", con el prefijo de ").append(explained.country);
}

void appendRules(std::string& to, const IdentifierExplanation& explained) {
    to += explained.rule;
    if (!explained.rule.empty() && !explained.prefixRule.empty()) to.append("; ").append(explained.prefixRule);
}

void appendReason(std::string& to, const IdentifierExplanation& explained) {
    const std::string_view control = isDigit(explained.expected) ? "el dígito de control" : "la letra de control";
    switch (explained.fault) {
        case None:
            return;
        case NoneToday:
            return appendWhyOnlyToday(to, explained);
        case Form:
            return appendFormReason(to, explained);
        case ShortNumber:
            to += "hoy se escribe con ocho cifras, ";
            to.append(digitsOfPerson + 1 - explained.normalForm.size(), '0').append(explained.normalForm);
            return;
        case ControlMissing:
            to.append("falta ").append(control).append(", ") += explained.expected;
            return;
        case ControlWrong:
            to.append(control).append(" debería ser ") += explained.expected;
            return;
        case FormerPrefix:
            to += explained.normalForm.starts_with("GR")
                      ? "el prefijo de Grecia es EL"
                      : "el Reino Unido ya no da números intracomunitarios, salvo Irlanda del Norte con XI";
            return;
    }
}

std::string advice(const IdentifierExplanation& explained) {
    std::string said(explained.normalForm, 0, longestShown);
    if (explained.normalForm.size() > longestShown) said += "…";
    if (!said.empty()) said += ": ";
    appendReason(said, explained);
    if (explained.fault != None) return said;
    appendFullName(said, explained);
    return said;
}

StatusKind adviceKind(const IdentifierExplanation& explained) {
    if (!explained.validToday) return StatusKind::Warning;
    return explained.valid ? StatusKind::Good : StatusKind::Plain;
}

std::string spellingKey(std::string_view identifier) {
    std::string key(identifier);
    verificarCif(key);
    if (key.starts_with("ES") && key.size() > 2) key.erase(0, 2);
    if (!key.empty() && isDigit(key.front())) key.erase(0, std::min(key.find_first_not_of('0'), key.size() - 1));
    return key;
}

}  // namespace FendaMaestros
