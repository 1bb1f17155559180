#include "app/Operations.h"

#include <algorithm>
#include <stdexcept>

#include "app/frmIdentificador.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

constexpr int f(int number) { return key::F1 + number - 1; }

std::string yesOrNo(bool value) { return value ? "sí" : "no"; }

Operation screen(std::string name, std::string group, std::string caption, int keyCode, void (FendaMaes::*show)()) {
    return {.name = std::move(name),
            .group = std::move(group),
            .caption = std::move(caption),
            .key = {keyCode},
            .open = [show](FendaMaes& component) { (component.*show)(); },
            .call =
                [show](FendaMaes& component, const Arguments&) {
                    (component.*show)();
                    return Outcome{};
                }};
}

Outcome callLetter(FendaMaes& component, const Arguments& arguments) {
    std::string message;
    std::string letter = component.Calcula_letra_NIF(arguments.text(0), &message);
    return {std::move(letter), {{"mensaje", std::move(message)}}};
}

Outcome callVerify(FendaMaes& component, const Arguments& arguments) {
    std::string value = arguments.text(0);
    const bool valid = component.FnVerificarCif(value, arguments.flag(1, false));
    return {yesOrNo(valid), {{"sValor", std::move(value)}}};
}

void openLetter(FendaMaes& component) {
    frmIdentificador("Letra de un NIF", "Número", "&Calcular", "Sus cifras, siete o más, sin puntos.",
                     [&component](const std::string& number) {
                         std::string message;
                         const std::string letter = component.Calcula_letra_NIF(number, &message);
                         return letter.empty() ? message : number + letter;
                     })
        .show();
}

void openVerify(FendaMaes& component) {
    frmIdentificador("Comprobar un identificador fiscal", "Identificador", "&Comprobar",
                     "Se aceptan minúsculas, puntos y guiones.",
                     [&component](std::string identifier) {
                         // None is registered with a quote, which the register's read could not take.
                         const bool mayBeRegistered = identifier.find('\'') == std::string::npos;
                         const bool valid = component.FnVerificarCif(identifier, mayBeRegistered);
                         return identifier + (valid ? " es válido" : " no es válido");
                     })
        .show();
}

}  // namespace

std::string Arguments::text(std::size_t index, std::string absent) const {
    return index < texts_.size() ? texts_[index] : absent;
}

bool Arguments::flag(std::size_t index, bool absent) const {
    if (index >= texts_.size()) return absent;
    const std::string word = text::folded(texts_[index]);
    if (word == "si" || word == "1") return true;
    if (word == "no" || word == "0") return false;
    throw std::invalid_argument("Se esperaba sí o no, y no «" + texts_[index] + "».");
}

const std::vector<Operation>& operations() {
    static const std::string tables = "&Tablas";
    static const std::string identifiers = "&Identificadores";
    static const std::vector<Operation> all{
        screen("jCentros", tables, "&Centros de trabajo", f(2), &FendaMaes::jCentros),
        screen("jDepartamentos", tables, "&Departamentos", f(3), &FendaMaes::jDepartamentos),
        screen("jConceptos", tables, "C&onceptos contables", f(4), &FendaMaes::jConceptos),
        screen("jPaises", tables, "&Países", f(5), &FendaMaes::jPaises),
        screen("jMasas", tables, "&Masas patrimoniales", f(6), &FendaMaes::jMasas),
        {"FnVerificarCif", identifiers, "Comprobar un &identificador", {f(7)}, 2, openVerify, callVerify},
        {"Calcula_letra_NIF", identifiers, "&Letra de un NIF", {f(8)}, 1, openLetter, callLetter},
    };
    return all;
}

const Operation* findOperation(std::string_view name) {
    const auto found = std::ranges::find_if(
        operations(), [name](const Operation& operation) { return text::equalIgnoringCase(operation.name, name); });
    return found == operations().end() ? nullptr : &*found;
}

}  // namespace FendaMaestros
