#include "app/NewCompany.h"

#include <ctime>
#include <stdexcept>

#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

constexpr std::size_t longestName = 60;
constexpr int abroad = 99;

[[noreturn]] void refuse(const std::string& sentence) { throw std::invalid_argument(sentence); }

/// A whole number within limits; `what` begins the sentence that says so.
int number(const std::string& typed, int least, int most, const std::string& what) {
    const bool plain = text::isNumericCode(typed) && typed.size() <= 4;
    const int value = plain ? std::stoi(typed) : 0;
    if (plain && value >= least && value <= most) return value;
    refuse(what + " debe ser un número de " + std::to_string(least) + " a " + std::to_string(most) + ", y no «" +
           typed + "».");
}

std::string validName(const std::string& typed) {
    std::string name = text::trim(typed);
    if (name.empty()) refuse("Falta el nombre de la empresa.");
    if (!text::isUtf8(name)) refuse("El nombre de la empresa no es un texto UTF-8.");
    if (text::length(name) > longestName)
        refuse("El nombre de la empresa no puede tener más de " + std::to_string(longestName) + " caracteres.");
    for (const char32_t c : text::characters(name))
        if (text::isControl(c)) refuse("El nombre de la empresa tiene caracteres que no se pueden escribir.");
    return name;
}

int currentYear() {
    const std::time_t now = std::time(nullptr);
    return std::localtime(&now)->tm_year + 1900;
}

int fiscalYear(const std::string& typed) {
    return typed.empty() ? currentYear() : number(typed, 1900, 2999, "El ejercicio");
}

int province(const std::string& typed) {
    const std::string what = "La provincia, si no es 99 (extranjero),";
    return typed == std::to_string(abroad) ? abroad : number(typed, 1, 52, what);
}

/// 0 shows the name first, anything else the surnames.
int nameOrder(const std::string& typed) {
    const std::string word = text::folded(typed);
    if (word.empty() || word == "nombre" || word == "0") return 0;
    if (word == "apellidos" || word == "1") return 1;
    refuse("El orden del nombre debe ser nombre o apellidos, y no «" + typed + "».");
}

}  // namespace

NewCompany validCompany(const CompanyRequest& request) {
    const auto given = [](const std::string& typed, const char* otherwise) {
        return typed.empty() ? otherwise : typed;
    };
    return {validName(request.name), fiscalYear(request.fiscalYear),
            number(given(request.digits, "8"), 4, 15, "El número de dígitos de una subcuenta"),
            province(given(request.province, "28")), nameOrder(request.nameOrder)};
}

}  // namespace FendaMaestros
