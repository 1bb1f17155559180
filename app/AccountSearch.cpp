#include "app/AccountSearch.h"

#include <stdexcept>

#include "ui/Screen.h"

namespace FendaMaestros {

namespace {

constexpr std::int16_t byCode = 1;

}  // namespace

std::int32_t AccountSearch::fnBuscarCuentas(std::int16_t mode, bool bTodas) {
    if (!MyBd) throw std::logic_error("No se ha indicado la sesión de base de datos (MyBd).");
    const std::string column = mode == byCode ? "PCta_Cta" : "PCta_Des";
    const std::string active = bTodas ? "" : " AND PCta_bActiva = 1";
    AyudaCampos help(desktop_);
    help.Conexion = MyBd->Conexion();
    help.ColorFoco = focusColor;
    std::string chosen;
    help.Buscar(
        "SELECT PCta_Id, PCta_Cta, PCta_Des FROM PCta WHERE PCta_Subcuenta = 1" + active + " ORDER BY " + column,
        column, "Cuenta", "Nombre", mode == byCode ? "Cuentas por código" : "Cuentas por nombre", 1500, 5500, 0,
        chosen);
    return static_cast<std::int32_t>(AyudaCampos::chosenId(chosen));
}

}  // namespace FendaMaestros
