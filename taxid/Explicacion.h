#pragma once

#include <string>
#include <string_view>

#include "toolkit/Controls.h"

namespace FendaMaestros {

enum class IdentifierKind {
    Nothing,         ///< no letter and no digit
    Person,          ///< digits and a letter, the number of an identity card
    Foreigner,       ///< NIE: X, Y or Z
    SpecialPerson,   ///< K, L or M, for persons without identity card and without NIE
    Organisation,    ///< CIF
    IntraCommunity,  ///< of another country of the Union, or with the prefix of one that has left or changed it
    OtherCountry,    ///< two letters that are the prefix of no country of the Union
    Unknown
};

enum class IdentifierFault {
    None,
    NoneToday,  ///< what verificarCif() refuses and today's rules admit
    Form,
    ShortNumber,     ///< a person's with fewer than eight digits, which zeros in front make up
    ControlMissing,  ///< `expected` behind it is all it lacks
    ControlWrong,    ///< it should be `expected`
    FormerPrefix     ///< that of a country that has another today, or none
};

/// What an identifier is and what the rules say of it. The views are of texts that live as long as the program.
struct IdentifierExplanation {
    std::string normalForm;  ///< as verificarCif() leaves it: without the "ES" of an organisation
    IdentifierKind kind = IdentifierKind::Nothing;
    std::string_view name;        ///< in Spanish: "CIF de una sociedad anónima"
    std::string_view country;     ///< in Spanish, of an intra-community number, "España" of one with ES; "" of others
    bool valid = false;           ///< the verdict of verificarCif()
    bool validToday = false;      ///< by the rules named below; those of other countries are their lengths and signs
    char expected = '\0';         ///< the control character that its digits ask for; '\0' when they ask for none
    std::string_view rule;        ///< the published rule that says so; "" when there is none
    std::string_view prefixRule;  ///< that of the prefix ES; "" without it
    IdentifierFault fault = IdentifierFault::None;
};

IdentifierExplanation explainIdentifier(std::string_view typed);

/// Appends its name with the country: "número intracomunitario de Francia". Nothing when nobody knows what it is.
void appendFullName(std::string& to, const IdentifierExplanation& explained);
/// Appends the rules that say so, parted by "; ".
void appendRules(std::string& to, const IdentifierExplanation& explained);
/// Appends what is wrong, as a Spanish sentence: "el dígito de control debería ser 2". Nothing when nothing is.
void appendReason(std::string& to, const IdentifierExplanation& explained);

/// "B33778813: el dígito de control debería ser 2"; of what is right, what it is. Of a long one only the beginning is
/// shown.
std::string advice(const IdentifierExplanation& explained);

/// How the advice is meant: a warning for what today's rules refuse, plain for what verificarCif() alone refuses.
StatusKind adviceKind(const IdentifierExplanation& explained);

/// Equal for two spellings of one identifier: signs, small letters, the prefix ES and the zeros in front of a person's
/// number make no difference.
std::string spellingKey(std::string_view identifier);

}  // namespace FendaMaestros
