#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

#include "taxid/Explicacion.h"
#include "taxid/Validacion.h"

using namespace std::literals;

namespace FendaMaestros::testing {
namespace {

constexpr bool valid = true;
constexpr bool invalid = false;

struct Rule {
    std::string name;
    std::string typed;
    std::string normalForm;
    bool verdict;
};

void PrintTo(const Rule& rule, std::ostream* out) { *out << '"' << rule.typed.substr(0, 40) << '"'; }
std::string ruleName(const ::testing::TestParamInfo<Rule>& info) { return info.param.name; }

class Identifier : public ::testing::TestWithParam<Rule> {};

TEST_P(Identifier, HasVerdictAndNormalForm) {
    std::string value = GetParam().typed;
    EXPECT_EQ(verificarCif(value), GetParam().verdict);
    EXPECT_EQ(value, GetParam().normalForm);
}

INSTANTIATE_TEST_SUITE_P(Person, Identifier,
                         ::testing::Values(Rule{"SignsAreDropped", "12.345.678-z", "12345678Z", valid},
                                           Rule{"LetterIsMissing", "12345678", "12345678", invalid},
                                           Rule{"LetterIsWrong", "12345678A", "12345678A", invalid},
                                           Rule{"SevenDigitsWillDo", "1234567L", "1234567L", valid},
                                           Rule{"SixDigitsWithLetterMakeSeven", "123456S", "123456S", valid},
                                           Rule{"SixCharactersAreTooFew", "12345V", "12345V", invalid},
                                           Rule{"LetterInTheMiddle", "1234L567L", "1234L567L", invalid},
                                           Rule{"TwoLetters", "12345678ZZ", "12345678ZZ", invalid},
                                           Rule{"SignBehindZCountsAsLetter", "12345678Z[", "12345678Z[", invalid},
                                           Rule{"ForeignX", "x1234567l", "X1234567L", valid},
                                           Rule{"ForeignYCountsAsOne", "Y1234567X", "Y1234567X", valid},
                                           Rule{"ForeignZCountsAsTwo", "Z1234567R", "Z1234567R", valid},
                                           Rule{"ForeignWithoutLetter", "X12345678", "X12345678", invalid},
                                           Rule{"ForeignIsNeverAnotherCountry", "YU123456789", "YU123456789", invalid},
                                           Rule{"ForeignTooShort", "X1234L", "X1234L", invalid}),
                         ruleName);

INSTANTIATE_TEST_SUITE_P(Organisation, Identifier,
                         ::testing::Values(Rule{"ControlDigit", "A12345674", "A12345674", valid},
                                           Rule{"SmallLetter", "e37968005", "E37968005", valid},
                                           Rule{"ControlDigitIsWrong", "A12345675", "A12345675", invalid},
                                           Rule{"LetterWhereADigitBelongs", "A1234567D", "A1234567D", invalid},
                                           Rule{"DigitWhereALetterBelongs", "P12345674", "P12345674", invalid},
                                           Rule{"CountryPrefixIsRemoved", "es-A12345674", "A12345674", valid},
                                           Rule{"CountryPrefixIsRemovedOnce", "ESESA12345674", "ESA12345674", invalid},
                                           Rule{"CountryPrefixBeforeAPerson", "ES12345678Z", "12345678Z", invalid},
                                           Rule{"CountryPrefixAndTooShort", "ESA123456", "A123456", invalid},
                                           Rule{"ControlLetter", "P1234567D", "P1234567D", valid},
                                           Rule{"ControlLetterOfN", "N2345678C", "N2345678C", valid},
                                           Rule{"ControlLetterOfZero", "Q0000000J", "Q0000000J", valid},
                                           Rule{"ControlDigitOfZero", "B00000000", "B00000000", valid},
                                           Rule{"NoOrganisationLetter", "K1234567D", "K1234567D", invalid},
                                           Rule{"EightCharacters", "A1234567", "A1234567", invalid},
                                           Rule{"TenCharacters", "A123456745", "A123456745", invalid},
                                           Rule{"LetterAmongTheDigits", "A12B4567X", "A12B4567X", invalid}),
                         ruleName);

/// Orden EHA/451/2008: which letters begin an organisation's identifier, and the kind of control of each.
TEST(OrganisationLetters, HaveEachTheirKindOfControl) {
    std::string withDigit, withLetter;
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        std::string digit = letter + std::string("12345674"), control = letter + std::string("1234567D");
        if (verificarCif(digit)) withDigit += letter;
        if (verificarCif(control)) withLetter += letter;
    }
    EXPECT_EQ(withDigit, "ABDEFGHJUV");
    EXPECT_EQ(withLetter, "CNPQRSW");
}

INSTANTIATE_TEST_SUITE_P(OtherCountry, Identifier,
                         ::testing::Values(Rule{"Denmark", "DK12345678", "DK12345678", valid},
                                           Rule{"DenmarkTooLong", "DK123456789", "DK123456789", invalid},
                                           Rule{"Portugal", "PT123456789", "PT123456789", valid},
                                           Rule{"Germany", "DE123456789", "DE123456789", valid},
                                           Rule{"GermanyTooShort", "DE12345678", "DE12345678", invalid},
                                           Rule{"Greece", "EL123456789", "EL123456789", valid},
                                           Rule{"Britain", "GB 123 4567 89", "GB123456789", valid},
                                           Rule{"Belgium", "BE123456789", "BE123456789", valid},
                                           Rule{"BelgiumTooLong", "BE0123456789", "BE0123456789", invalid},
                                           Rule{"Cyprus", "CY12345678L", "CY12345678L", valid},
                                           Rule{"France", "FR12345678901", "FR12345678901", valid},
                                           Rule{"Italy", "IT1234567890", "IT1234567890", invalid},
                                           Rule{"ItalyInFull", "IT12345678901", "IT12345678901", valid},
                                           Rule{"FranceTooShort", "FR1234567890", "FR1234567890", invalid},
                                           Rule{"Sweden", "SE123456789012", "SE123456789012", valid},
                                           Rule{"UnlistedIsTakenAsItComes", "NL123456789B01", "NL123456789B01", valid},
                                           Rule{"UnlistedButTooShort", "AB1234", "AB1234", invalid},
                                           Rule{"SignsBehindZAreAPrefixToo", "[\\1234567", "[\\1234567", valid}),
                         ruleName);

INSTANTIATE_TEST_SUITE_P(
    Hostile, Identifier,
    ::testing::Values(Rule{"Empty", "", "", invalid}, Rule{"NothingLeft", " -./\t\n", "", invalid},
                      Rule{"Nul", "1234\0005678Z"s, "12345678Z", valid},
                      Rule{"ControlCharacters",
                           "\x01\x7F"
                           "12345678\r\nZ\x1B",
                           "12345678Z", valid},
                      Rule{"AccentsAreNoLetters", "ñ12345678záÁ", "12345678Z", valid},
                      Rule{"BytesThatAreNoText",
                           "\xFF"
                           "12345678Z\xC3",
                           "12345678Z", valid},
                      Rule{"WideDigitsAreNoDigits", "１２３４５６７８Z", "Z", invalid},
                      Rule{"EmojiAndQuote", "12345678Z'🙂--", "12345678Z", valid},
                      Rule{"TenThousandNines", std::string(10'000, '9') + "N", std::string(10'000, '9') + "N", valid},
                      Rule{"TenThousandLetters", std::string(10'000, 'a'), std::string(10'000, 'A'), valid}),
    ruleName);

TEST(NifLetter, EachRemainderHasItsLetter) {
    const std::string letters = "TRWAGMYFPDXBNJZSQVHLCKE";
    for (int remainder = 0; remainder < 23; ++remainder)
        EXPECT_EQ(letraNif(std::to_string(23 * 1'000'000 + remainder)),
                  letters.substr(static_cast<std::size_t>(remainder), 1));
}

TEST(NifLetter, IsThatOfDoublePrecisionAsLongAsThatIsExact) {
    const std::string letters = "TRWAGMYFPDXBNJZSQVHLCKE";
    double value = 9'007'199'254'740'991;
    for (; value >= 1'000'000; value = std::floor(value / 1.37)) {
        const auto remainder = static_cast<std::size_t>(value - std::floor(value / 23) * 23);
        EXPECT_EQ(letraNif(std::to_string(static_cast<std::int64_t>(value))), letters.substr(remainder, 1)) << value;
    }
}

TEST(NifLetter, SaysWhyThereIsNone) {
    const auto reason = [](std::string_view number) {
        std::string message = "intacto";
        EXPECT_EQ(letraNif(number, &message), "");
        return message;
    };
    EXPECT_EQ(reason(""), "No se ha introducido datos");
    EXPECT_EQ(reason("123456"), "No se puede calcular el NIF, faltan dígitos");
    EXPECT_EQ(reason("ñññññ"), "No se puede calcular el NIF, faltan dígitos");
    EXPECT_EQ(reason("1234567A"), "el dato introducido no es numérico");
    EXPECT_EQ(reason("-1234567"), "el dato introducido no es numérico");
    EXPECT_EQ(reason("1234567\0"sv), "el dato introducido no es numérico");
}

TEST(NifLetter, LeavesTheMessageAloneWhenThereIsOne) {
    std::string message = "intacto";
    EXPECT_EQ(letraNif("1234567", &message), "L");
    EXPECT_EQ(letraNif("12345678"), "Z");
    EXPECT_EQ(message, "intacto");
}

struct Advised {
    std::string name;
    std::string typed;
    std::string advice;
    StatusKind kind;
    std::string rule;
};

void PrintTo(const Advised& row, std::ostream* out) { *out << '"' << row.typed.substr(0, 40) << '"'; }

class Advice : public ::testing::TestWithParam<Advised> {};

TEST_P(Advice, SaysWhatItIsOrWhatIsWrongAndByWhichRule) {
    const IdentifierExplanation explained = explainIdentifier(GetParam().typed);
    EXPECT_EQ(advice(explained), GetParam().advice);
    EXPECT_EQ(adviceKind(explained), GetParam().kind);
    std::string rules;
    appendRules(rules, explained);
    EXPECT_EQ(rules, GetParam().rule);
    std::string value = GetParam().typed;
    EXPECT_EQ(explained.valid, verificarCif(value));
    EXPECT_EQ(explained.normalForm, value);
}

constexpr auto good = StatusKind::Good;
constexpr auto plain = StatusKind::Plain;
constexpr auto warning = StatusKind::Warning;
const std::string personLaw = "Real Decreto 1065/2007, artículo 19";
const std::string foreignerLaw = "Real Decreto 1065/2007, artículo 20; Orden INT/2058/2008";
const std::string organisationLaw = "Real Decreto 1065/2007, artículo 22; Orden EHA/451/2008";
const std::string prefixLaw = "; Real Decreto 1065/2007, artículo 25; Directiva 2006/112/CE, artículo 215";
const std::string unionLaw = "Directiva 2006/112/CE, artículos 214 y 215; formas publicadas en VIES";

INSTANTIATE_TEST_SUITE_P(
    Spain, Advice,
    ::testing::Values(
        Advised{"Person", "12.345.678-z", "12345678Z: NIF de una persona con DNI", good, personLaw},
        Advised{"PersonWithoutLetter", "12345678", "12345678: falta la letra de control, Z", warning, personLaw},
        Advised{"PersonWithWrongLetter", "12345678A", "12345678A: la letra de control debería ser Z", warning,
                personLaw},
        Advised{"SixDigits", "123456S", "123456S: hoy se escribe con ocho cifras, 00123456S", warning, personLaw},
        Advised{"NineDigits", "123456789D", "123456789D: debería tener ocho cifras y una letra", warning, personLaw},
        Advised{"NieY", "y1234567x", "Y1234567X: NIE, NIF de una persona extranjera", good, foreignerLaw},
        Advised{"NieWithWrongLetter", "Z1234567L", "Z1234567L: la letra de control debería ser R", warning,
                foreignerLaw},
        Advised{"NieOfEightDigits", "X01234567L", "X01234567L: debería tener una letra, siete cifras y otra letra",
                warning, foreignerLaw},
        Advised{"NieWithoutLetter", "X1234567", "X1234567: falta la letra de control, L", warning, foreignerLaw},
        Advised{"Child", "K1234567L", "K1234567L: hoy es correcto, aunque la comprobación no admite la inicial K",
                plain, personLaw},
        Advised{"WithoutNie", "M1234567D", "M1234567D: la letra de control debería ser L", warning,
                "Real Decreto 1065/2007, artículo 20"},
        Advised{"Company", "B33778813", "B33778813: el dígito de control debería ser 2", warning, organisationLaw},
        Advised{"CompanyInOrder", "b-33778812", "B33778812: CIF de una sociedad de responsabilidad limitada", good,
                organisationLaw},
        Advised{"CompanyWithoutControl", "A1234567", "A1234567: falta el dígito de control, 4", warning,
                organisationLaw},
        Advised{"LetterWhereTheDigitIsKnown", "A1234567D", "A1234567D: el dígito de control debería ser 4", warning,
                organisationLaw},
        Advised{"DigitWhereNoRuleSays", "C12345674", "C12345674: hoy es correcto, aunque la comprobación espera D",
                plain, organisationLaw},
        Advised{"TownHall", "P12345674", "P12345674: la letra de control debería ser D", warning, organisationLaw},
        Advised{"TenCharacters", "B337788122",
                "B337788122: debería tener una letra, siete cifras y un carácter de control", warning, organisationLaw},
        Advised{"PrefixOfCompany", "ESA12345674", "A12345674: CIF de una sociedad anónima, con el prefijo de España",
                good, organisationLaw + prefixLaw},
        Advised{"PrefixOfPerson", "ES12345678Z",
                "12345678Z: hoy es correcto, aunque la comprobación no lo admite con el prefijo ES", plain,
                personLaw + prefixLaw},
        Advised{"PrefixTwice", "ESESA12345674", "ESA12345674: no es un NIF, un NIE ni un número intracomunitario",
                warning, ""},
        Advised{"NoInitial", "T1234567D", "T1234567D: no es un NIF, un NIE ni un número intracomunitario", warning, ""},
        Advised{"Words", "Muebles", "MUEBLES: no es un NIF, un NIE ni un número intracomunitario", warning, ""},
        Advised{"Nothing", " -", "no hay ningún identificador", warning, ""},
        Advised{"VeryLong", std::string(100, 'a') + "1",
                std::string(40, 'A') + "…: ningún país de la Unión Europea tiene el prefijo AA", warning, ""}),
    [](const auto& row) { return row.param.name; });

INSTANTIATE_TEST_SUITE_P(
    OtherCountries, Advice,
    ::testing::Values(
        Advised{"France", "FR 12 345678901", "FR12345678901: número intracomunitario de Francia", good, unionLaw},
        Advised{"BelgiumToday", "BE0123456789",
                "BE0123456789: hoy es correcto, aunque la comprobación no admite esta forma", plain, unionLaw},
        Advised{"BelgiumBefore", "BE123456789", "BE123456789: detrás de BE debería haber diez cifras, la primera 0 o 1",
                warning, unionLaw},
        Advised{"Austria", "ATU12345678", "ATU12345678: número intracomunitario de Austria", good, unionLaw},
        Advised{"IrelandWithTwoLetters", "IE1234567WI", "IE1234567WI: número intracomunitario de Irlanda", good,
                unionLaw},
        Advised{"NetherlandsWithoutB", "NL123456789012",
                "NL123456789012: detrás de NL debería haber nueve caracteres, una B y otros dos", warning, unionLaw},
        Advised{"RomaniaShort", "RO12", "RO12: hoy es correcto, aunque la comprobación no admite esta forma", plain,
                unionLaw},
        Advised{"LithuaniaTenDigits", "LT1234567890", "LT1234567890: detrás de LT debería haber nueve o doce cifras",
                warning, unionLaw},
        Advised{"NorthernIreland", "XI123456789",
                "XI123456789: hoy es correcto, aunque la comprobación no admite esta forma", plain,
                "Directiva 2006/112/CE, artículo 215; Directiva (UE) 2020/1756"},
        Advised{"Britain", "GB123456789",
                "GB123456789: el Reino Unido ya no da números intracomunitarios, salvo Irlanda del Norte con XI",
                warning, unionLaw},
        Advised{"GreeceByItsIsoCode", "GR123456789", "GR123456789: el prefijo de Grecia es EL", warning, unionLaw},
        Advised{"NoCountryOfTheUnion", "US123456789",
                "US123456789: ningún país de la Unión Europea tiene el prefijo US", warning, ""}),
    [](const auto& row) { return row.param.name; });

TEST(Spellings, OfOneIdentifierHaveOneKey) {
    EXPECT_EQ(spellingKey("es-b/33778812"), spellingKey("B33778812"));
    EXPECT_EQ(spellingKey("00.123.456-s"), spellingKey("123456S"));
    EXPECT_NE(spellingKey("B33778812"), spellingKey("B33778813"));
    EXPECT_NE(spellingKey("X0123456H"), spellingKey("X123456H"));
    EXPECT_EQ(spellingKey("000"), "0");
}

}  // namespace
}  // namespace FendaMaestros::testing
