#include "app/Operations.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

#include "app/AccountOperations.h"
#include "app/YesOrNo.h"
#include "app/window/frmIdentificador.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

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
                },
            .kinds = {}};
}

Outcome callRegister(FendaMaes& component, const Arguments& arguments) {
    component.jNif(arguments.text(0));
    return {};
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
    frmIdentificador(
        "Letra de un NIF", "Número", "&Calcular",
        [&component](const std::string& number) {
            std::string message;
            const std::string letter = component.Calcula_letra_NIF(number, &message);
            return letter.empty() ? message : number + letter;
        },
        "Sus cifras, siete o más, sin puntos.")
        .show();
}

void openVerify(FendaMaes& component) {
    frmIdentificador(
        "Comprobar un identificador fiscal", "Identificador", "&Comprobar",
        [&component](std::string identifier) {
            const bool valid = component.FnVerificarCif(identifier, true);
            return identifier + (valid ? " es válido" : " no es válido");
        },
        "Se aceptan minúsculas, puntos y guiones.")
        .show();
}

template <class Number>
Number wholeNumber(const std::string& given) {
    Number value = 0;
    const auto [end, error] = std::from_chars(given.data(), given.data() + given.size(), value);
    if (error != std::errc() || end != given.data() + given.size())
        throw std::invalid_argument("Se esperaba un número entero, y no «" + given + "».");
    return value;
}

}  // namespace

std::string Arguments::text(std::size_t index, std::string absent) const {
    return index < texts_.size() ? texts_[index] : absent;
}

bool Arguments::flag(std::size_t index, bool absent) const {
    if (index >= texts_.size()) return absent;
    if (const auto value = readYesOrNo(texts_[index])) return *value;
    throw std::invalid_argument("Se esperaba sí o no, y no «" + texts_[index] + "».");
}

std::int16_t Arguments::number(std::size_t index, std::int16_t absent) const {
    return index < texts_.size() ? wholeNumber<std::int16_t>(texts_[index]) : absent;
}

std::int32_t Arguments::identity(std::size_t index) const {
    return index < texts_.size() ? wholeNumber<std::int32_t>(texts_[index]) : 0;
}

void checkArguments(const Operation& operation, const Arguments& arguments) {
    if (arguments.count() > operation.maxArguments)
        throw std::invalid_argument(
            operation.name + (operation.maxArguments == 0
                                  ? " no lleva argumentos"
                                  : " lleva " + std::to_string(operation.maxArguments) + " argumentos como mucho"));
    for (std::size_t index = 0; index < operation.kinds.size(); ++index) {
        if (operation.kinds[index] == ArgumentKind::Flag) (void)arguments.flag(index, false);
        if (operation.kinds[index] == ArgumentKind::Number) (void)arguments.number(index, 0);
        if (operation.kinds[index] == ArgumentKind::Identity) (void)arguments.identity(index);
    }
}

const std::vector<Operation>& operations() {
    using enum ArgumentKind;
    static const std::string tables = "&Tablas";
    static const std::string accounts = "&Cuentas";
    static const std::string identifiers = "&Identificadores";
    static const std::vector<Operation> all{
        screen("jCentros", tables, "&Centros de trabajo", key::F(2), &FendaMaes::jCentros),
        screen("jDepartamentos", tables, "&Departamentos", key::F(3), &FendaMaes::jDepartamentos),
        screen("jConceptos", tables, "C&onceptos contables", key::F(4), &FendaMaes::jConceptos),
        screen("jPaises", tables, "&Países", key::F(5), &FendaMaes::jPaises),
        screen("jMasas", tables, "&Masas patrimoniales", key::F(6), &FendaMaes::jMasas),
        {"jPlanCuentas",
         accounts,
         "&Plan de cuentas",
         {key::F(2), shift::Shift},
         1,
         openAccounts,
         callAccounts,
         {Identity}},
        {"CrearNuevaCuenta",
         accounts,
         "&Nueva cuenta",
         {key::F(3), shift::Shift},
         3,
         openNewAccount,
         callNewAccount,
         {Text, Identity, Flag}},
        {"fnBuscarCuentas",
         accounts,
         "&Buscar una cuenta",
         {key::F(11)},
         3,
         openSearchAccounts,
         callSearchAccounts,
         {Number, Flag, Flag}},
        {"fnBuscarConceptos",
         accounts,
         "Buscar un c&oncepto",
         {key::F(12)},
         1,
         openSearchConcepts,
         callSearchConcepts,
         {Number}},
        {"msValidaCuentaPlan",
         accounts,
         "Comp&robar una cuenta",
         {key::F(11), shift::Shift},
         3,
         openCheckAccount,
         callCheckAccount,
         {Text, Number, Flag}},
        {"jNif",
         identifiers,
         "Ma&estro de Cif/Nif",
         {key::F(9)},
         1,
         [](FendaMaes& component) { component.jNif(); },
         callRegister,
         {}},
        {"FnVerificarCif",
         identifiers,
         "Comprobar un &identificador",
         {key::F(7)},
         2,
         openVerify,
         callVerify,
         {Text, Flag}},
        {"Calcula_letra_NIF", identifiers, "&Letra de un NIF", {key::F(8)}, 1, openLetter, callLetter, {}},
        {"jCargaClavesRetencion",
         identifiers,
         "Claves de &retención",
         {key::F(7), shift::Shift},
         3,
         openKeys,
         callFillKeys,
         {Text, Number, Flag}},
        {"FnBuscaPoblacion",
         identifiers,
         "&Población de un código postal",
         {key::F(8), shift::Shift},
         2,
         openFindTown,
         callFindTown,
         {}},
    };
    return all;
}

const Operation* findOperation(std::string_view name) {
    const auto found = std::ranges::find_if(
        operations(), [name](const Operation& operation) { return text::equalIgnoringCase(operation.name, name); });
    return found == operations().end() ? nullptr : &*found;
}

}  // namespace FendaMaestros
