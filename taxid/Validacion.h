#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// The control characters of Spanish tax identifiers: NIF of persons (Real Decreto 1065/2007, articles 19 and 20), NIE
/// (Orden INT/2058/2008), NIF of organisations (Orden EHA/451/2008), and the lengths of the numbers that other
/// countries give for trade inside the Union.
namespace FendaMaestros {

/// The check letter of a personal tax number given as seven or more digits; leading zeros are not added. "" when there
/// is none: then `mensaje`, if given, receives the reason in Spanish. It is left alone otherwise.
std::string letraNif(std::string_view valor, std::string* mensaje = nullptr);

/// A personal number with its check letter, whatever letter it had, and without the signs and blanks in it (Real
/// Decreto 1065/2007, article 19). As it was typed when there is no letter for it.
std::string conLetra(std::string_view typed);

/// Leaves only capitals and digits (the two signs behind Z count as capitals). Never allocates.
void normalizarIdentificador(std::string& sValor);

/// Whether an identifier of any kind is well formed. Normalises it first, whatever the verdict, and takes the "ES" off
/// an organisation. An identifier with nothing left is not valid. Never allocates.
bool verificarCif(std::string& sValor);

/// The same where a text stands.
struct CifVerificado {
    bool valid = false;
    std::size_t size = 0;  ///< of the text that is left
};
CifVerificado verificarCif(char* text, std::size_t size);

/// The check letter of a number, '\0' when one of its characters is no digit. Behind `foreign`, the X, Y or Z of a NIE,
/// that letter counts as a digit in front.
char nifLetter(std::string_view digits, char foreign = 'X');

/// The control of an organisation's number, as a digit and as a letter: which of the two it is depends on its initial.
struct OrganisationControl {
    char digit;
    char letter;
};
/// Nothing when the number is not of seven digits.
std::optional<OrganisationControl> organisationControl(std::string_view digits);
/// Whether the control of organisations with this initial is a letter.
bool hasControlLetter(char initial);

}  // namespace FendaMaestros
