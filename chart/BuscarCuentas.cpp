#include "chart/BuscarCuentas.h"

#include "ui/Screen.h"
#include "ui/SessionAccess.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

constexpr std::int16_t byCode = 1;
/// Stands behind the name of an account that is inactive.
constexpr std::string_view inactiveMark = " *** INACTIVA ***";

struct ShownColumn {
    const char* caption;
    Twips width;
};

std::int32_t search(const std::string& sql, const std::string& searchColumn, ShownColumn first, ShownColumn second,
                    const std::string& title) {
    std::string chosen;
    AyudaCampos help = searchHelp();
    help.Inactiva = [](const Recordset& rows, int row) { return rows.cell(row, 1).text().ends_with(inactiveMark); };
    help.Buscar(sql, searchColumn, first.caption, second.caption, title, first.width, second.width, 0, chosen);
    return static_cast<std::int32_t>(AyudaCampos::chosenId(chosen));
}

/// `Plan`, from the active fiscal year when it is not known yet.
int knownPlan() {
    WorkContext& component = instanciaActual();
    if (component.Plan == 0) component.Plan = planEnVigor(ejercicioActivo(component.sesion().Parametros()));
    return component.Plan;
}

}  // namespace

std::int32_t fnBuscarCuentas(std::int16_t n, bool bPGC, bool bSoloActivas) {
    const std::string planAccounts = "WHERE PCta_Plan = " + std::to_string(knownPlan()) + " AND Pcta_Subcuenta = 0";
    std::string filter = bPGC ? planAccounts : " WHERE Pcta_Subcuenta = 1";
    if (!bPGC && n == byCode && bSoloActivas) filter += " AND PCta_bActiva=1";

    const std::string mark = " + case PCta_bActiva when 0 then '" + std::string(inactiveMark) + "' else '' end ";
    const std::string sql =
        n == byCode ? "Select PCta_Id,PCta_Cta + ' ' + PCta_Des" + mark + "AS Cuenta ,'' AS PCta_Des FROM PCta "
                    : "Select PCta_Id,PCta_Des + ' (' + PCta_Cta + ')'" + mark + "AS Cuenta,'' as PCta_Des FROM PCta ";
    return search(sql + filter + " ORDER BY Cuenta", "Cuenta", {"Cuenta", 7000}, {"", 100},
                  n == byCode ? "Buscar cuentas por codigo" : "Buscar cuentas por nombre");
}

std::int32_t fnBuscarConceptos(std::int16_t n) {
    const std::string column = n == byCode ? "Conce_Cod" : "Conce_Des";
    return search(
        "Select Conce_Id,Conce_Cod ,Conce_Des FROM KXComun.dbo.Conceptos WHERE Conce_Cod < 1000  ORDER BY " + column,
        column, {"Codigo", 1200}, {"Conceptos", 6000},
        n == byCode ? "Buscar conceptos por codigo" : "Buscar conceptos por nombre");
}

std::vector<KeyHint> accountSearches() {
    return {{{key::F(1)}, "Buscar la cuenta por código"}, {{key::F(2)}, "Buscar la cuenta por nombre"}};
}

}  // namespace FendaMaestros
