#include "app/AccountOperations.h"

#include "app/YesOrNo.h"
#include "app/window/frmBusqueda.h"
#include "app/window/frmClaves.h"
#include "app/window/frmIdentificador.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

constexpr std::int16_t byCode = 1;
constexpr std::int16_t byName = 2;
constexpr const char* spain = "011";

std::int16_t fiscalYear(const FendaMaes& component) { return ejercicioActivo(component.sesion().Parametros()); }

std::int16_t planOf(const FendaMaes& component) { return planEnVigor(fiscalYear(component)); }

constexpr const char* onlyDigits = "Solo cifras, sin espacios ni comas.";

/// Code and name of the row that a search has chosen.
std::string found(FendaMaes& component, const std::string& sql, std::int32_t id) {
    const auto rows = component.sesion().Conexion()->Execute(sql + std::to_string(id));
    if (rows->Eof()) return "No se ha elegido nada.";
    return rows->cell(0, 0).text() + " " + rows->cell(0, 1).text();
}

}  // namespace

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

Outcome callFillKeys(FendaMaes& component, const Arguments& arguments) {
    ComboBox combo;
    component.jCargaClavesRetencion(combo, arguments.text(0, "-"), arguments.number(1, fiscalYear(component)),
                                    arguments.flag(2, false));
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

void openAccounts(FendaMaes& component) { component.jPlanCuentas(); }

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

void openKeys(FendaMaes& /*component*/) { frmClaves().show(); }

void openFindTown(FendaMaes& component) {
    frmIdentificador("Población de un código postal", "Código postal", "&Buscar",
                     [&component](const std::string& code) {
                         const std::string town = component.FnBuscaPoblacion(spain, code);
                         return town.empty() ? "Ningún registro tiene ese código postal." : town;
                     })
        .show();
}

}  // namespace FendaMaestros
