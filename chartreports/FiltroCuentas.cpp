#include "chartreports/FiltroCuentas.h"

#include "session/Literal.h"
#include "session/TypedText.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

bool isBlank(const std::string& typed) { return text::trim(typed).empty(); }

bool isByPlace(TipoInforme tipo) { return tipo == TipoInforme::Departamentos || tipo == TipoInforme::Centros; }

std::string columns(TipoInforme tipo) {
    switch (tipo) {
        case TipoInforme::Departamentos:
            return "SELECT PCta_Id, "
                   "(SELECT Dpto_Des FROM Dpto WHERE Dpto_Id = PCta_IdDpto) AS Departamento, "
                   "Pcta_Cta, Pcta_Des";
        case TipoInforme::Centros:
            return "SELECT PCta_Id, "
                   "(SELECT Centro_Des FROM Centro WHERE Centro_Id = PCta_IdCen) AS Departamento, "
                   "Pcta_Cta, Pcta_Des";
        case TipoInforme::Nif:
            return "SELECT PCta_Id,Pcta_Cta, Pcta_Des,Nif_Doc AS Nif,Nif_Nom as RSocial, "
                   "(Nif_Sg + ' ' +  RTRIM(Nif_Dir) + ' ' + Nif_Num + ' ' + Nif_Esc + ' ' + Nif_Pis + ' ' + Nif_Pue) "
                   "AS Direcion, "
                   "Nif_Cp AS Cpostal,Nif_Pob AS Poblacion,Nif_Prov AS Provincia, "
                   "(SELECT PAIS_NOM FROM KXComun.dbo.Pais WHERE Pais_Cod = Nif_Pais) AS Pais ";
        case TipoInforme::Subcuentas:
        case TipoInforme::SubcuentasCompleto:
        case TipoInforme::CuentasSubcuentas:
            break;
    }
    return "SELECT PCta_Id,Pcta_Cta, Pcta_Des";
}

std::string balanceColumn(bool withBalance) {
    if (!withBalance) return ",'' AS Saldo ";
    return ",(SELECT isnull(SUM(Apu_Debe-Apu_Haber),0) From Apu  WHERE Apu_Cta = PCta_Cta AND Apu_Estado = 0) AS "
           "Saldo ";
}

std::string join(TipoInforme tipo) {
    return tipo == TipoInforme::Nif ? "INNER JOIN KXComun.dbo.Nif ON Nif_Id = PCta_IdNif " : "";
}

std::string baseCondition(const FiltroCuentas& filtro) {
    if (filtro.tipo == TipoInforme::CuentasSubcuentas)
        return " WHERE PCta_Plan = " + std::to_string(filtro.plan) + " OR PCta_SubCuenta=1";
    if (filtro.tipo == TipoInforme::Nif) return " WHERE PCta_SubCuenta=1 AND Pcta_IdNif>0";
    return " WHERE PCta_SubCuenta=1 ";
}

std::string balanceCondition(const FiltroCuentas& filtro) {
    const bool from = typed::amount(filtro.desdeSaldo).has_value();
    const bool to = typed::amount(filtro.hastaSaldo).has_value();
    if (!from && !to) return {};
    const std::string lower = text::replaced(filtro.desdeSaldo, ".", "");
    const std::string upper = text::replaced(filtro.hastaSaldo, ".", "");
    const std::string having = from && to ? "BETWEEN " + lower + " AND " + upper : from ? ">= " + lower : "<= " + upper;
    const std::string condition =
        " AND PCTA_Id IN (SELECT Apu_IdCta FROM Apu  WHERE APU_ESTADO =0  GROUP BY Apu_IdCta "
        "HAVING SUM(Apu_Debe-Apu_Haber) " +
        having + ")";
    return text::replaced(condition, ",", ".");
}

std::string stateCondition(EstadoCuenta estado) {
    switch (estado) {
        case EstadoCuenta::Activas:
            return " AND  PCta_bActiva = 1";
        case EstadoCuenta::Inactivas:
            return " AND  PCta_bActiva = 0";
        case EstadoCuenta::Todas:
            break;
    }
    return {};
}

/// What the listing and its total have in common behind the base condition.
std::string conditions(const FiltroCuentas& filtro) {
    std::string all = condicionRango(filtro.desde, filtro.hasta);
    if (!filtro.departamento.empty()) all += " AND  PCta_IdDpto = " + filtro.departamento;
    if (!filtro.centro.empty()) all += " AND  PCta_IdCen = " + filtro.centro;
    return all + balanceCondition(filtro) + condicionNombre(filtro.nombre, filtro.enCualquierParte) +
           stateCondition(filtro.estado);
}

std::string endOfRange(const ExtremoRango& end, const char* open) {
    return isBlank(end.codigo) ? open : end.codigo + " " + end.nombre;
}

}  // namespace

OrdenCuentas ordenCuentas(TipoInforme tipo, int nColumna) {
    constexpr OrdenCuentas byCode{" PCta_Cta", "Cuenta "};
    constexpr OrdenCuentas byName{" PCta_Des", "Descripción "};
    if (!isByPlace(tipo)) return nColumna == 2 ? byName : byCode;
    if (nColumna == 2) return byCode;
    if (nColumna == 3) return byName;
    return {" Departamento", tipo == TipoInforme::Departamentos ? "Departamento " : "Centro "};
}

std::string condicionRango(const std::string& desde, const std::string& hasta) {
    if (isBlank(desde) && isBlank(hasta)) return {};
    if (isBlank(hasta)) return " AND  PCta_Cta >= " + literal(desde);
    if (isBlank(desde)) return " AND  PCta_Cta  <= " + literal(hasta);
    return " AND  PCta_Cta BETWEEN " + literal(desde) + " AND " + literal(hasta);
}

std::string condicionNombre(const std::string& nombre, bool enCualquierParte) {
    if (isBlank(nombre)) return {};
    return " AND  PCTA_Des Like " + literal((enCualquierParte ? "%" : "") + nombre + "%");
}

std::string sqlListado(const FiltroCuentas& filtro, int nColumna, bool bAsc) {
    return columns(filtro.tipo) + balanceColumn(filtro.conSaldo) + " FROM Pcta " + join(filtro.tipo) +
           baseCondition(filtro) + conditions(filtro) + " ORDER BY" + ordenCuentas(filtro.tipo, nColumna).columna +
           (bAsc ? " ASC " : " DESC ");
}

std::string sqlTotal(const FiltroCuentas& filtro) {
    return "SELECT isnull(SUM(Apu_Debe-Apu_Haber),0) FROM Apu INNER JOIN Pcta ON pcta_cta = apu_cta " +
           join(filtro.tipo) + baseCondition(filtro) + "AND Apu_Estado = 0 " + conditions(filtro);
}

std::string sqlSubcuenta(std::int64_t id, const std::string& codigo) {
    return "SELECT * FROM PCta WHERE PCta_Subcuenta=1 " +
           (id != 0 ? " AND PCta_Id = " + std::to_string(id) : " AND PCta_Cta = " + literal(codigo));
}

std::string textoRango(const ExtremoRango& desde, const ExtremoRango& hasta) {
    return "Entre las cuentas " + endOfRange(desde, "Primera") + " y " + endOfRange(hasta, "Ultima");
}

}  // namespace FendaMaestros
