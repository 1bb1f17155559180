#include "chart/CodigosCuenta.h"
#include "chart/frmPlanCtas.h"
#include "session/Literal.h"
#include "toolkit/Text.h"
#include "ui/RowWrite.h"
#include "ui/SessionAccess.h"
#include "ui/WorkContext.h"

/// The commands of the sub-account screen that write.
namespace FendaMaestros {

namespace {

/// The fiscal year whose journal lines receive centres and departments.
constexpr const char* assignedYear = "2009";

/// Gives one column of the account to the lines of its journal in the assigned year.
void assignToJournal(ConexionBd& connection, const char* sql, const char* from, const char* to) {
    const auto accounts = connection.Execute(sql);
    for (; !accounts->Eof(); accounts->MoveNext()) {
        RowWrite write(instanciaActual().sesion(), "Apu");
        write.column(to, valor::Numero, accounts->Fields(from).Value);
        write.update(" WHERE Apu_Cta = " + literal(accounts->Fields("pcta_cta").Value.text()) +
                     " AND Apu_Eje = " + assignedYear);
    }
}

}  // namespace

bool frmPlanCtas::comprobarGrabacion() {
    bool repeated = false;
    if (!intentar([&] { repeated = nIdActual == 0 && existeCodigo(); })) return false;
    if (repeated) {
        rechazarRepetida();
        return false;
    }
    if (!faltaNif()) return true;
    avisarGrabacion("No ha indicado el Nif asociado");
    setFocus(Text1(Documento));
    return false;
}

bool frmPlanCtas::existeCodigo() const {
    return !read("SELECT * FROM PCta WHERE PCta_Cta = " + literal(Text1(Codigo).Text))->Eof();
}

void frmPlanCtas::rechazarRepetida() {
    avisarGrabacion("Error en la grabación de la cuenta");
    if (bModoCrear) return cerrarConCuenta();
    LimpiarPantalla();
    cmdNueva.Visible = false;
    setFocus(Text1(Codigo));
}

bool frmPlanCtas::faltaNif() const {
    return needsIdentity(Text1(Codigo).Text) && (text::trim(Text1(Documento).Text).empty() || nIdNif == 0);
}

void frmPlanCtas::describirCuenta(RowWrite& write) const {
    const auto code = [&](const char* column, const std::string& account) {
        write.column(column, account.empty() ? valor::Nulo : valor::Texto, account.empty() ? "Null" : account);
    };
    const std::string associated = text::trim(Text1(Asociada).Text);
    write.column("PCta_Cta", valor::Texto, Text1(Codigo).Text);
    write.column("PCta_Des", valor::Texto, text::trim(Text1(Nombre).Text));
    write.column("PCta_IdMasa", valor::Numero, cboMasas.chosenId());
    write.column("PCta_IdCen", valor::Numero, cboCentro.chosenId());
    write.column("PCta_IdDpto", valor::Numero, cboDepar.chosenId());
    write.column("Pcta_IdNif", valor::Numero, nIdNif);
    code("PCta_CtaAso", associated);
    write.column("PCta_IdCtaAso", valor::Numero, associated.empty() ? 0 : nIdCtaAso);
    code("PCta_CtaIrpfAso", text::trim(Text1(Irpf).Text));
    write.column("PCta_SubCuenta", valor::Entero, 1);
    write.column("Pcta_Origen", valor::Entero, nOrigen);
    write.column("Pcta_IdOrigen", valor::Numero, nIdOrigen);
    write.column("PCta_bActiva", valor::Entero, Option1.Value() ? 1 : 0);
}

void frmPlanCtas::escribirCambio(RowWrite& account, const std::string& where) {
    account.update(where);
    const std::string name = text::trim(Text1(Nombre).Text);
    if (name.empty()) return;
    RowWrite lines(instanciaActual().sesion(), "Apu");
    lines.column("Apu_CtaDes", valor::Texto, name);
    lines.update(" WHERE Apu_IdCta = " + std::to_string(nIdActual) + " AND Apu_CtaDes=''");
}

void frmPlanCtas::comprobarAlta() const {
    requireUnique(*instanciaActual().sesion().Conexion(), "PCta", "PCta_Cta", Text1(Codigo).Text);
}

void frmPlanCtas::terminarGrabacion() {
    markPendingMessage();
    ask("Grabación finalizada", message::Information, sTituloVentana);
    if (bModoCrear || nIdInicial > 0) return cerrarConCuenta();
    LimpiarPantalla();
    cmdNueva.Visible = false;
    setFocus(Text1(Codigo));
}

void frmPlanCtas::cerrarConCuenta() {
    instanciaActual().Cuenta = Text1(Codigo).Text;
    unload();
}

void frmPlanCtas::asignarCentros() {
    {
        const BusyGuard busy(*this);
        assignToJournal(
            *Ayuda.Conexion,
            "SELECT PCta_Cta,Pcta_IdCen FROM PCta WHERE PCta_subcuenta=1 and pcta_Idcen<>0 order by pcta_cta",
            "Pcta_IdCen", "Apu_IdCen");
        assignToJournal(
            *Ayuda.Conexion,
            "SELECT PCta_Cta,PCta_IdDpto FROM PCta WHERE PCta_subcuenta=1 and PCta_IdDpto<>0 order by pcta_cta",
            "PCta_IdDpto", "Apu_IdDpto");
    }
    ask("Proceso finalizado", message::Ok, {});
    unload();
}

}  // namespace FendaMaestros
