#include "app/YesOrNo.h"
#include "app/operations/Operations.h"
#include "app/window/frmBusqueda.h"
#include "app/window/frmIdentificador.h"
#include "toolkit/Keys.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

constexpr std::int16_t byCode = 1;
constexpr std::int16_t byName = 2;

std::int16_t fiscalYear(const FendaMaes& component) { return ejercicioActivo(component.sesion().Parametros()); }

std::int16_t planOf(const FendaMaes& component) { return planEnVigor(fiscalYear(component)); }

constexpr const char* onlyDigits = "Solo cifras, sin espacios ni comas.";

/// Code and name of the row that a search has chosen.
std::string found(FendaMaes& component, const std::string& sql, std::int32_t id) {
    const auto rows = component.sesion().Conexion()->Execute(sql + std::to_string(id));
    if (rows->Eof()) return "No se ha elegido nada.";
    return rows->cell(0, 0).text() + " " + rows->cell(0, 1).text();
}

Outcome callAccounts(FendaMaes& component, const Arguments& arguments) {
    component.jPlanCuentas(arguments.identity(0));
    return {};
}

Outcome callNewAccount(FendaMaes& component, const Arguments& arguments) {
    std::string code = arguments.text(0);
    std::string saved = component.CrearNuevaCuenta(code, arguments.identity(1), arguments.flag(2, false));
    return {std::move(saved), {{"sCta", std::move(code)}}};
}

Outcome callSearchAccounts(FendaMaes& component, const Arguments& arguments) {
    return {component.fnBuscarCuentas(arguments.number(0, byCode), arguments.flag(1, false), arguments.flag(2, true)),
            {}};
}

Outcome callSearchConcepts(FendaMaes& component, const Arguments& arguments) {
    return {component.fnBuscarConceptos(arguments.number(0, byCode)), {}};
}

Outcome callCheckAccount(FendaMaes& component, const Arguments& arguments) {
    const std::int16_t plan = arguments.number(1, planOf(component));
    return {yesOrNo(component.msValidaCuentaPlan(arguments.text(0), plan, arguments.flag(2, true))), {}};
}

void openNewAccount(FendaMaes& component) {
    frmIdentificador("Nueva cuenta", "Grupo o cuenta completa", "&Crear", [&component](std::string code) {
        if (!text::isNumericCode(code)) return std::string(onlyDigits);
        component.Cuenta.clear();
        const bool isGroup = code.size() < digitosSubcuenta(component.sesion().Parametros());
        const std::string saved = component.CrearNuevaCuenta(code, 0, isGroup);
        return saved.empty() ? std::string("No se ha creado ninguna cuenta.") : "Cuenta " + saved;
    }).show();
}

void openSearchAccounts(FendaMaes& component) {
    const auto search = [&component](std::int16_t mode, bool plan, bool onlyActive) {
        return [&component, mode, plan, onlyActive] {
            return found(component, "SELECT PCta_Cta, PCta_Des FROM PCta WHERE PCta_Id = ",
                         component.fnBuscarCuentas(mode, plan, onlyActive));
        };
    };
    frmBusqueda("Buscar una cuenta", {{"Por &código", search(byCode, false, true)},
                                      {"Por &nombre", search(byName, false, true)},
                                      {"Por código, &inactivas también", search(byCode, false, false)},
                                      {"Plan &oficial, por código", search(byCode, true, true)}})
        .show();
}

void openSearchConcepts(FendaMaes& component) {
    const auto search = [&component](std::int16_t mode) {
        return [&component, mode] {
            return found(component, "SELECT Conce_Cod, Conce_Des FROM KXComun.dbo.Conceptos WHERE Conce_Id = ",
                         component.fnBuscarConceptos(mode));
        };
    };
    frmBusqueda("Buscar un concepto", {{"Por &código", search(byCode)}, {"Por &nombre", search(byName)}}).show();
}

void openCheckAccount(FendaMaes& component) {
    frmIdentificador("Comprobar una cuenta", "Cuenta", "&Comprobar", [&component](std::string code) {
        if (!text::isNumericCode(code)) return std::string(onlyDigits);
        const std::int16_t plan = planOf(component);
        return "La cuenta " + code + (component.msValidaCuentaPlan(code, plan) ? " vale" : " no vale") +
               " para el plan " + std::to_string(plan) + ".";
    }).show();
}

}  // namespace

std::vector<Operation> accountOperations() {
    using enum ArgumentKind;
    const std::string menu = "&Cuentas";
    return {
        {.name = "jPlanCuentas",
         .group = menu,
         .caption = "&Plan de cuentas",
         .key = {key::F(2), shift::Shift},
         .arguments = {Identity},
         .open = [](FendaMaes& component) { component.jPlanCuentas(); },
         .call = callAccounts},
        {.name = "CrearNuevaCuenta",
         .group = menu,
         .caption = "&Nueva cuenta",
         .key = {key::F(3), shift::Shift},
         .arguments = {Text, Identity, Flag},
         .open = openNewAccount,
         .call = callNewAccount},
        screenOperation("jshowInformePlandeCuentas", menu, "&Listado del plan de cuentas", {key::F(4), shift::Shift},
                        &FendaMaes::jshowInformePlandeCuentas),
        screenOperation("jshowPGCVerificacion", menu, "&Verificación del plan", {key::F(5), shift::Shift},
                        &FendaMaes::jshowPGCVerificacion),
        screenOperation("jshowPGCMantenimiento", menu, "Plan &general contable", {key::F(6), shift::Shift},
                        &FendaMaes::jshowPGCMantenimiento),
        {.name = "fnBuscarCuentas",
         .group = menu,
         .caption = "&Buscar una cuenta",
         .key = {key::F(11)},
         .arguments = {Number, Flag, Flag},
         .open = openSearchAccounts,
         .call = callSearchAccounts},
        {.name = "fnBuscarConceptos",
         .group = menu,
         .caption = "Buscar un c&oncepto",
         .key = {key::F(12)},
         .arguments = {Number},
         .open = openSearchConcepts,
         .call = callSearchConcepts},
        {.name = "msValidaCuentaPlan",
         .group = menu,
         .caption = "Comp&robar una cuenta",
         .key = {key::F(11), shift::Shift},
         .arguments = {Text, Number, Flag},
         .open = openCheckAccount,
         .call = callCheckAccount},
    };
}

}  // namespace FendaMaestros
