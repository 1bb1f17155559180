#pragma once

#include <cstdint>
#include <string>

/// The chart listing as texts: what is asked for comes in as plain data, the reads go out.
namespace FendaMaestros {

/// The kinds of chart listing, in the order of their list.
enum class TipoInforme { Subcuentas, SubcuentasCompleto, CuentasSubcuentas, Departamentos, Centros, Nif };

enum class EstadoCuenta { Activas, Inactivas, Todas };

/// Which accounts are listed. Texts are those of the fields: a blank one filters nothing.
struct FiltroCuentas {
    TipoInforme tipo = TipoInforme::Subcuentas;
    /// The plan in force, 2008 or 1990; only CuentasSubcuentas lists its accounts.
    std::int16_t plan = 2008;
    /// First and last account code.
    std::string desde = {}, hasta = {};
    /// Dpto_Id and Centro_Id; empty for all.
    std::string departamento = {}, centro = {};
    /// Bounds of the balance as a field shows them, "1.000,50"; no amount filters nothing.
    std::string desdeSaldo = {}, hastaSaldo = {};
    /// How the description begins, or, `enCualquierParte`, what stands anywhere in it.
    std::string nombre = {};
    bool enCualquierParte = false;
    EstadoCuenta estado = EstadoCuenta::Activas;
    bool conSaldo = false;  ///< with the balance of each account
};

/// What a click on a header orders a listing by.
struct OrdenCuentas {
    const char* columna;  ///< " PCta_Des"
    const char* titulo;   ///< caption of the header, before its mark
};

/// The order of a grid column. One that no order belongs to, -1 among them, gives the default order.
OrdenCuentas ordenCuentas(TipoInforme tipo, int nColumna);

/// The read of the listing. Its columns: the identity, those of the kind of listing, and always `Saldo`.
std::string sqlListado(const FiltroCuentas& filtro, int nColumna, bool bAsc);
/// The read of the sum of the balances of what the listing shows: one row, one column.
std::string sqlTotal(const FiltroCuentas& filtro);

/// " AND " and the condition that lists the codes of a range; empty for an open one.
std::string condicionRango(const std::string& desde, const std::string& hasta);
/// The same for a description; empty when `nombre` is blank.
std::string condicionNombre(const std::string& nombre, bool enCualquierParte);

/// The look-up of the sub-account at an end of the range: by its identity, or by its code when that is 0.
std::string sqlSubcuenta(std::int64_t id, const std::string& codigo);
/// Stands for the name of an end of the range whose code is no sub-account.
inline constexpr const char* cuentaInexistente = "Código de cuenta no existe";

/// One end of the range in words: its code and the name of that account, or, without code, "Primera" or "Ultima".
struct ExtremoRango {
    std::string codigo;
    std::string nombre;
};
/// "Entre las cuentas Primera y Ultima".
std::string textoRango(const ExtremoRango& desde, const ExtremoRango& hasta);

}  // namespace FendaMaestros
