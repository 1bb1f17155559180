#include "app/YesOrNo.h"
#include "app/operations/Operations.h"
#include "app/window/frmBusqueda.h"
#include "app/window/frmIdentificador.h"
#include "chart/CodigosCuenta.h"
#include "session/Literal.h"
#include "toolkit/Keys.h"
#include "toolkit/Text.h"
#include "ui/SessionAccess.h"

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

/// What a code typed for a new account stands for, as in the code field of its screen; a group without a comma is one
/// whose next free code is wanted, too.
NextCode codeToCreate(std::string typed, std::size_t digits) {
    typed = text::replaced(typed, ".", ",");
    const bool isGroup = text::isNumericCode(typed) && typed.size() < digits;
    const bool isNext = asksForNextCode(typed);
    NextCode wanted{completedCode(typed, digits), {}};
    if (isGroup || isNext) {
        const std::string group = typed.substr(0, typed.size() - (isNext ? 1 : 0));
        wanted = nextCode(read(highestCodeSql(group))->cell(0, 0), group, digits);
    }
    if (!wanted.refusal.empty()) return wanted;
    if (!text::isNumericCode(wanted.code)) return {{}, onlyDigits};
    if (wanted.code.size() == digits) return wanted;
    return {{}, wanted.code + " no vale: las subcuentas de la empresa tienen " + std::to_string(digits) + " dígitos."};
}

void openNewAccount(FendaMaes& component) {
    frmIdentificador("Nueva cuenta", "Grupo o cuenta completa", "&Crear", [&component](const std::string& typed) {
        std::string none = "No se ha creado ninguna cuenta.";
        NextCode wanted = codeToCreate(typed, digitosSubcuenta(component.sesion().Parametros()));
        if (!wanted.refusal.empty()) return wanted.refusal;
        if (!read("SELECT * FROM PCta WHERE PCta_Cta = " + literal(wanted.code))->Eof())
            return "La cuenta " + wanted.code + " ya existe.";
        if (!component.msValidaCuentaPlan(wanted.code, planOf(component))) return none;
        component.Cuenta.clear();
        const std::string saved = component.CrearNuevaCuenta(wanted.code, 0, false);
        return saved.empty() ? none : "Cuenta " + saved;
    }).show();
}

/// A sub-account that is chosen opens in its screen; what has been found is told as that screen leaves it.
void openSearchAccounts(FendaMaes& component) {
    const auto search = [&component](std::int16_t mode, bool plan, bool onlyActive) {
        return [&component, mode, plan, onlyActive] {
            const std::int32_t id = component.fnBuscarCuentas(mode, plan, onlyActive);
            if (id != 0 && !plan) component.jPlanCuentas(id);
            return found(component, "SELECT PCta_Cta, PCta_Des FROM PCta WHERE PCta_Id = ", id);
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
