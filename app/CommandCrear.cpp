#include "app/CommandCrear.h"

#include <chrono>
#include <cstdio>
#include <stdexcept>

#include "toolkit/Text.h"
#ifdef FENDA_WITH_SQLITE
#include "platform/sqlite/DataFolder.h"
#endif

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
    if (name.empty()) refuse("Falta el nombre de la empresa (--nombre).");
    if (text::length(name) > longestName)
        refuse("El nombre de la empresa (--nombre) no puede tener más de " + std::to_string(longestName) +
               " caracteres.");
    for (const char32_t c : text::characters(name))
        if (c < 32 || c == 127)
            refuse("El nombre de la empresa (--nombre) tiene caracteres que no se pueden escribir.");
    return name;
}

int currentYear() {
    const std::chrono::year_month_day today(std::chrono::floor<std::chrono::days>(std::chrono::system_clock::now()));
    return static_cast<int>(today.year());
}

int fiscalYear(const std::string& typed) {
    return typed.empty() ? currentYear() : number(typed, 1900, 2999, "El ejercicio (--ejercicio)");
}

int province(const std::string& typed) {
    const std::string what = "La provincia (--provincia), si no es 99 (extranjero),";
    return typed == std::to_string(abroad) ? abroad : number(typed, 1, 52, what);
}

/// 0 shows the name first, anything else the surnames.
int nameOrder(const std::string& typed) {
    const std::string word = text::folded(typed);
    if (word.empty() || word == "nombre") return 0;
    if (word == "apellidos") return 1;
    refuse("El orden del nombre (--orden) debe ser nombre o apellidos, y no «" + typed + "».");
}

struct Company {
    std::string name;
    int fiscalYear;
    int digits;
    int province;
    int nameOrder;
};

Company read(const CompanyRequest& request) {
    const auto given = [](const std::string& typed, const char* otherwise) {
        return typed.empty() ? otherwise : typed;
    };
    return {validName(request.name), fiscalYear(request.fiscalYear),
            number(given(request.digits, "8"), 4, 15, "El número de dígitos de una subcuenta (--digitos)"),
            province(given(request.province, "28")), nameOrder(request.nameOrder)};
}

#ifdef FENDA_WITH_SQLITE

void create(const std::filesystem::path& folder, const Company& company) {
    sqlite::DataFolder(folder).createCompany({.name = company.name,
                                              .fiscalYear = company.fiscalYear,
                                              .accountDigits = company.digits,
                                              .province = company.province,
                                              .nameOrder = company.nameOrder});
}

#else

void create(const std::filesystem::path&, const Company&) {
    throw std::runtime_error("Este programa se ha construido sin base de datos: no puede crear empresas.");
}

#endif

}  // namespace

int runCrear(const std::filesystem::path& folder, const CompanyRequest& request) {
    const Company company = read(request);
    create(folder, company);
    std::printf("Se ha creado la empresa «%s», ejercicio %d, en %s\n", company.name.c_str(), company.fiscalYear,
                folder.c_str());
    return 0;
}

}  // namespace FendaMaestros
