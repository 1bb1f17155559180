#include <algorithm>
#include <array>
#include <stdexcept>

#include "chart/DobleTransaccion.h"
#include "chart/frmPlanCtas.h"
#include "component/FendaMaes.h"
#include "session/Condition.h"
#include "session/ErrorBd.h"
#include "toolkit/Text.h"
#include "ui/Grabacion.h"

/// The commands of the sub-account screen that write.
namespace FendaMaestros {

namespace {

/// Customers, suppliers, creditors and suppliers of fixed assets: an account of these has a tax identity.
constexpr std::array<std::string_view, 5> groupsWithIdentity{"430", "440", "410", "400", "523"};
/// The fiscal year whose journal lines receive centres and departments.
constexpr const char* assignedYear = "2009";

/// Gives one column of the account to the lines of its journal in the assigned year.
void assignToJournal(ConexionBd& connection, const char* sql, const char* from, const char* to) {
    const auto accounts = connection.Execute(sql);
    for (; !accounts->Eof(); accounts->MoveNext()) {
        Grabacion write(instanciaActual().sesion(), "Apu");
        write.campo(to, valor::Numero, accounts->Fields(from).Value);
        write.actualizar(" WHERE Apu_Cta = '" + insideQuotes(accounts->Fields("pcta_cta").Value.text()) +
                         "' AND Apu_Eje = " + assignedYear);
    }
}

}  // namespace

void frmPlanCtas::avisarGrabacion(const std::string& text) {
    Tag = "E";
    ask(text, message::Ok, {});
}

template <class Step>
bool frmPlanCtas::intentar(Step&& step) {
    try {
        step();
        return true;
    } catch (const GrabacionRechazada&) {
        return false;
    } catch (const std::exception& error) {
        avisarGrabacion("Error en la grabación de la cuenta " + std::string(error.what()));
        return false;
    }
}

void frmPlanCtas::guardar() {
    if (!text::isNumericCode(text::trimEnd(Text1(Codigo).Text)))
        return avisarGrabacion("Debe indicar un codigo de cuenta");
    bool repeated = false;
    if (!intentar([&] { repeated = nIdActual == 0 && existeCodigo(); })) return;
    if (repeated) return rechazarRepetida();
    if (faltaNif()) {
        avisarGrabacion("No ha indicado el Nif asociado");
        return setFocus(Text1(Documento));
    }
    if (intentar([this] { conPaciencia([this] { grabar(); }); })) terminarGrabacion();
}

bool frmPlanCtas::existeCodigo() const {
    return !Ayuda.Conexion->Execute("SELECT * FROM PCta WHERE PCta_Cta = '" + insideQuotes(Text1(Codigo).Text) + "'")
                ->Eof();
}

void frmPlanCtas::rechazarRepetida() {
    avisarGrabacion("Error en la grabación de la cuenta");
    if (bModoCrear) return cerrarConCuenta();
    LimpiarPantalla();
    cmdNueva.Visible = false;
    setFocus(Text1(Codigo));
}

bool frmPlanCtas::faltaNif() const {
    const std::string group = text::left(Text1(Codigo).Text, 3);
    if (std::ranges::find(groupsWithIdentity, group) == groupsWithIdentity.end()) return false;
    return text::trim(Text1(Documento).Text).empty() || nIdNif == 0;
}

void frmPlanCtas::grabar() {
    std::int64_t id = nIdActual;
    try {
        DobleTransaccion transaction(instanciaActual());
        if (id != 0)
            actualizarCuenta();
        else
            id = insertarCuenta();
        transaction.confirmarBd();
        // Whatever the second commit does, the row may by now be another than the one read.
        rsMostrada.reset();
        transaction.confirmarOrigen();
    } catch (...) {
        // The first of the two commits may have stored the new row: a save tried again must then update it, and must
        // insert it when it has gone with the second.
        if (nIdActual == 0 && id != 0 && estaGrabada(id)) nIdActual = id;
        throw;
    }
    nIdActual = id;
}

bool frmPlanCtas::estaGrabada(std::int64_t id) const {
    try {
        return !Ayuda.Conexion
                    ->Execute("SELECT PCta_Id FROM PCta WHERE PCta_Id = " + std::to_string(id) + " AND PCta_Cta = '" +
                              insideQuotes(Text1(Codigo).Text) + "'")
                    ->Eof();
    } catch (const ErrorBd&) {
        return false;
    }
}

void frmPlanCtas::describirCuenta(Grabacion& write) const {
    const auto code = [&](const char* column, const std::string& account) {
        write.campo(column, account.empty() ? valor::Nulo : valor::Texto, account.empty() ? "Null" : account);
    };
    const std::string associated = text::trim(Text1(Asociada).Text);
    write.campo("PCta_Cta", valor::Texto, Text1(Codigo).Text);
    write.campo("PCta_Des", valor::Texto, text::trim(Text1(Nombre).Text));
    write.campo("PCta_IdMasa", valor::Numero, cboMasas.idElegido());
    write.campo("PCta_IdCen", valor::Numero, cboCentro.idElegido());
    write.campo("PCta_IdDpto", valor::Numero, cboDepar.idElegido());
    write.campo("Pcta_IdNif", valor::Numero, nIdNif);
    code("PCta_CtaAso", associated);
    write.campo("PCta_IdCtaAso", valor::Numero, associated.empty() ? 0 : nIdCtaAso);
    code("PCta_CtaIrpfAso", text::trim(Text1(Irpf).Text));
    write.campo("PCta_SubCuenta", valor::Entero, 1);
    write.campo("Pcta_Origen", valor::Entero, nOrigen);
    write.campo("Pcta_IdOrigen", valor::Numero, nIdOrigen);
    write.campo("PCta_bActiva", valor::Entero, Option1.Value() ? 1 : 0);
}

void frmPlanCtas::actualizarCuenta() {
    SesionBd& session = instanciaActual().sesion();
    const std::string id = std::to_string(nIdActual);
    const auto stored = Ayuda.Conexion->Execute("SELECT * FROM PCta WHERE PCta_Id = " + id);
    if (stored->Eof()) {
        nIdActual = 0;
        cmdBorrar.Enabled = false;
        throw std::runtime_error("Otro programa ha eliminado la cuenta. Si la guarda otra vez, se crea de nuevo.");
    }
    if (rsMostrada && !stored->sameContents(*rsMostrada))
        throw std::runtime_error("Otro programa ha cambiado la cuenta. Vuelva a buscarla para ver cómo está ahora.");
    Grabacion account(session, "PCta");
    describirCuenta(account);
    account.actualizar(" WHERE PCta_Id = " + id);

    const std::string name = text::trim(Text1(Nombre).Text);
    if (name.empty()) return;
    Grabacion lines(session, "Apu");
    lines.campo("Apu_CtaDes", valor::Texto, name);
    lines.actualizar(" WHERE Apu_IdCta = " + id + " AND Apu_CtaDes=''");
}

std::int64_t frmPlanCtas::insertarCuenta() const {
    Grabacion account(instanciaActual().sesion(), "PCta");
    describirCuenta(account);
    callandoRechazo([&] { account.insertar(); });
    const std::int64_t id = Ayuda.Conexion->Execute("SELECT MAX(Pcta_Id) FROM PCta")->cell(0, 0).integer();
    exigirUnico(*Ayuda.Conexion, "PCta", "PCta_Cta", Text1(Codigo).Text);
    return id;
}

void frmPlanCtas::terminarGrabacion() {
    Tag = "e";
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

void frmPlanCtas::borrar() {
    if (text::trim(Text1(Codigo).Text).empty()) return;
    if (!confirmarEnSitio("Desea eliminar la cuenta indicada", message::Question, sTituloVentana)) return;
    if (!confirmarEnSitio("ATENCION: Confirma que desea eliminar la cuenta seleccionada", message::Critical,
                          sTituloVentana))
        return;
    borrarFilas(instanciaActual().sesion(), "PCta", " WHERE PCta_Id = '" + std::to_string(nIdActual) + "'");
    LimpiarPantalla();
    setFocus(Text1(Codigo));
}

void frmPlanCtas::asignarCentros() {
    {
        const Ocupado busy(*this);
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
