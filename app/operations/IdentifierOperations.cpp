#include "app/YesOrNo.h"
#include "app/operations/Operations.h"
#include "app/window/frmClaves.h"
#include "app/window/frmIdentificador.h"
#include "taxid/Explicacion.h"
#include "toolkit/Keys.h"

namespace FendaMaestros {

namespace {

constexpr const char* spain = "011";

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

Outcome callFillKeys(FendaMaes& component, const Arguments& arguments) {
    ComboBox combo;
    const std::int16_t year =
        arguments.count() > 1 ? arguments.number(1, 0) : ejercicioActivo(component.sesion().Parametros());
    component.jCargaClavesRetencion(combo, arguments.text(0, "-"), year, arguments.flag(2, false));
    Outcome outcome;
    for (int item = 0; item < combo.ListCount(); ++item)
        outcome.rewritten.emplace_back("oCb.List(" + std::to_string(item) + ")", combo.List(item));
    outcome.rewritten.emplace_back("oCb.ListIndex", std::to_string(combo.ListIndex()));
    outcome.rewritten.emplace_back("oCb.Enabled", yesOrNo(combo.Enabled));
    return outcome;
}

Outcome callFindTown(FendaMaes& component, const Arguments& arguments) {
    return {component.FnBuscaPoblacion(arguments.text(0), arguments.text(1)), {}};
}

/// What is known beyond the verdict, each in a line of its own.
std::string inDetail(const IdentifierExplanation& explained) {
    std::string lines;
    if (!explained.name.empty()) appendFullName(lines += "\n", explained);
    if (explained.valid != explained.validToday)
        lines +=
            explained.validToday ? "\nSegún las normas de hoy es válido" : "\nSegún las normas de hoy no es válido";
    if (explained.expected != '\0') lines += std::string("\nControl esperado: ") + explained.expected;
    if (!explained.rule.empty()) appendRules(lines += "\nNorma: ", explained);
    return lines;
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
            const IdentifierExplanation explained = explainIdentifier(identifier);
            const bool valid = component.FnVerificarCif(identifier, true);
            return frmIdentificador::Finding(
                identifier + (valid ? " es válido" : " no es válido") + inDetail(explained), advice(explained),
                adviceKind(explained));
        },
        "Se aceptan minúsculas, puntos y guiones.")
        .show();
}

void openFindTown(FendaMaes& component) {
    frmIdentificador("Población de un código postal", "Código postal", "&Buscar",
                     [&component](const std::string& code) {
                         const std::string town = component.FnBuscaPoblacion(spain, code);
                         return town.empty() ? "Ningún registro tiene ese código postal." : town;
                     })
        .show();
}

}  // namespace

std::vector<Operation> identifierOperations() {
    using enum ArgumentKind;
    const std::string menu = "&Identificadores";
    return {
        {.name = "jNif",
         .group = menu,
         .caption = "Ma&estro de Cif/Nif",
         .key = {key::F(9)},
         .arguments = {Text},
         .open = [](FendaMaes& component) { component.jNif(); },
         .call = callRegister},
        {.name = "FnVerificarCif",
         .group = menu,
         .caption = "Comprobar un &identificador",
         .key = {key::F(7)},
         .arguments = {Text, Flag},
         .open = openVerify,
         .call = callVerify},
        {.name = "Calcula_letra_NIF",
         .group = menu,
         .caption = "&Letra de un NIF",
         .key = {key::F(8)},
         .arguments = {Text},
         .open = openLetter,
         .call = callLetter},
        {.name = "jCargaClavesRetencion",
         .group = menu,
         .caption = "Claves de &retención",
         .key = {key::F(7), shift::Shift},
         .arguments = {Text, Number, Flag},
         .open = [](FendaMaes&) { frmClaves().show(); },
         .call = callFillKeys},
        {.name = "FnBuscaPoblacion",
         .group = menu,
         .caption = "&Población de un código postal",
         .key = {key::F(8), shift::Shift},
         .arguments = {Text, Text},
         .open = openFindTown,
         .call = callFindTown},
    };
}

}  // namespace FendaMaestros
