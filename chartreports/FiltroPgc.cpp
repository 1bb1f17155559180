#include "chartreports/FiltroPgc.h"

namespace FendaMaestros {

OrdenCuentas ordenPgc(int nColumna) {
    if (nColumna == 2) return {"PCta_Des", "Descripción "};
    if (nColumna == 3) return {"Masa", "Masa Patrimonial "};
    return {"PCta_Cta", "Cuenta "};
}

std::string sqlListadoPgc(const FiltroPgc& filtro, int nColumna, bool bAsc) {
    const std::string mass = filtro.masa.empty() ? "" : " AND  PCta_IdMasa = " + filtro.masa;
    return "SELECT PCta_Id,Pcta_Cta, Pcta_Des,"
           "(SELECT Masas_Des FROM kxcomun.dbo.masas WHERE Masas_Id = PCta_IdMasa) AS Masa "
           " FROM Pcta "
           " WHERE PCta_SubCuenta=0 AND PCta_Plan = " +
           filtro.plan + condicionRango(filtro.desde, filtro.hasta) + mass +
           condicionNombre(filtro.nombre, filtro.enCualquierParte) + " ORDER BY " + ordenPgc(nColumna).columna +
           (bAsc ? " ASC " : " DESC ");
}

}  // namespace FendaMaestros
