#include "session/Companies.h"

#include <ctime>
#include <optional>
#include <stdexcept>
#include <string_view>

#include "session/ErrorBd.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

constexpr std::size_t longestName = 60;
constexpr int abroad = 99;

/// Why a value cannot be taken; nothing when it can.
using Objection = std::optional<std::string>;

/// A whole number that a company is created with.
struct Setting {
    std::string_view what;  ///< begins the sentence of an objection
    int least;
    int most;

    bool allows(int value) const { return value >= least && value <= most; }
    std::string objection(const std::string& typed) const {
        return std::string(what) + " debe ser un número de " + std::to_string(least) + " a " + std::to_string(most) +
               ", y no «" + typed + "».";
    }
    Objection objectionTo(int value) const { return allows(value) ? Objection() : objection(std::to_string(value)); }
};

constexpr Setting fiscalYear{"El ejercicio", 1900, 2999};
constexpr Setting accountDigits{"El número de dígitos de una subcuenta", 4, 15};
constexpr Setting province{"La provincia, si no es 99 (extranjero),", 1, 52};

Objection objectionToName(const std::string& name) {
    if (text::trim(name).empty()) return "Falta el nombre de la empresa.";
    if (!text::isUtf8(name)) return "El nombre de la empresa no es un texto UTF-8.";
    if (text::length(name) > longestName)
        return "El nombre de la empresa no puede tener más de " + std::to_string(longestName) + " caracteres.";
    for (const char32_t c : text::characters(name))
        if (text::isControl(c)) return "El nombre de la empresa tiene caracteres que no se pueden escribir.";
    return {};
}

Objection objectionTo(const NewCompany& company) {
    if (auto objection = objectionToName(company.name)) return objection;
    if (auto objection = fiscalYear.objectionTo(company.fiscalYear)) return objection;
    if (auto objection = accountDigits.objectionTo(company.accountDigits)) return objection;
    return company.province == abroad ? Objection() : province.objectionTo(company.province);
}

int readNumber(const Setting& setting, const std::string& typed, int otherwise) {
    if (typed.empty()) return otherwise;
    if (text::isNumericCode(typed) && typed.size() <= 4) return std::stoi(typed);
    throw std::invalid_argument(setting.objection(typed));
}

int readNameOrder(const std::string& typed) {
    const std::string word = text::folded(typed);
    if (word.empty() || word == "nombre" || word == "0") return 0;
    if (word == "apellidos" || word == "1") return 1;
    throw std::invalid_argument("El orden del nombre debe ser nombre o apellidos, y no «" + typed + "».");
}

int currentYear() {
    const std::time_t now = std::time(nullptr);
    return std::localtime(&now)->tm_year + 1900;
}

[[noreturn]] void refuseBackups() {
    throw ErrorBd(ErrorBd::Kind::Refused,
                  "Las copias de seguridad de un servidor las hace quien lo administra, con sus propias herramientas.");
}

}  // namespace

Backup Companies::backUp(const std::filesystem::path&) const { refuseBackups(); }

Backup Companies::restore(const std::filesystem::path&) const { refuseBackups(); }

void check(const NewCompany& company) {
    if (const auto objection = objectionTo(company)) throw ErrorBd(ErrorBd::Kind::Refused, *objection);
}

NewCompany readCompany(const TypedCompany& typed) {
    const NewCompany standard;
    NewCompany company{.name = text::trim(typed.name),
                       .fiscalYear = readNumber(fiscalYear, typed.fiscalYear, currentYear()),
                       .accountDigits = readNumber(accountDigits, typed.accountDigits, standard.accountDigits),
                       .province = readNumber(province, typed.province, standard.province),
                       .nameOrder = readNameOrder(typed.nameOrder)};
    if (const auto objection = objectionTo(company)) throw std::invalid_argument(*objection);
    return company;
}

}  // namespace FendaMaestros
