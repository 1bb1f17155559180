#include <algorithm>
#include <array>
#include <stdexcept>

#include "chart/DobleTransaccion.h"
#include "chart/frmPlanCtas.h"
#include "session/ErrorBd.h"
#include "session/Literal.h"
#include "toolkit/Text.h"
#include "ui/RowWrite.h"
#include "ui/SessionAccess.h"
#include "ui/WorkContext.h"

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
        RowWrite write(instanciaActual().sesion(), "Apu");
        write.column(to, valor::Numero, accounts->Fields(from).Value);
        write.update(" WHERE Apu_Cta = " + quoted(accounts->Fields("pcta_cta").Value.text()) +
                     " AND Apu_Eje = " + assignedYear);
    }
}

}  // namespace

void frmPlanCtas::avisarGrabacion(const std::string& text) {
    markPendingMessage('E');
    ask(text, message::Ok, {});
}

template <class Step>
bool frmPlanCtas::intentar(Step&& step) {
    try {
        step();
        return true;
    } catch (const SilentRefusal&) {
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
    if (intentar([this] { withPatience([this] { grabar(); }); })) terminarGrabacion();
}

bool frmPlanCtas::existeCodigo() const {
    return !read("SELECT * FROM PCta WHERE PCta_Cta = " + quoted(Text1(Codigo).Text))->Eof();
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
        transaction.commitBd();
        // Whatever the second commit does, the row may by now be another than the one read.
        rsMostrada.reset();
        transaction.commitOrigin();
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
        return !read("SELECT PCta_Id FROM PCta WHERE PCta_Id = " + std::to_string(id) +
                     " AND PCta_Cta = " + quoted(Text1(Codigo).Text))
                    ->Eof();
    } catch (const ErrorBd&) {
        return false;
    }
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

void frmPlanCtas::actualizarCuenta() {
    SesionBd& session = instanciaActual().sesion();
    const std::string id = std::to_string(nIdActual);
    const auto stored = read("SELECT * FROM PCta WHERE PCta_Id = " + id);
    if (stored->Eof()) {
        nIdActual = 0;
        cmdBorrar.Enabled = false;
        throw std::runtime_error("Otro programa ha eliminado la cuenta. Si la guarda otra vez, se crea de nuevo.");
    }
    if (rsMostrada && !stored->sameContents(*rsMostrada))
        throw std::runtime_error("Otro programa ha cambiado la cuenta. Vuelva a buscarla para ver cómo está ahora.");
    RowWrite account(session, "PCta");
    describirCuenta(account);
    account.update(" WHERE PCta_Id = " + id);

    const std::string name = text::trim(Text1(Nombre).Text);
    if (name.empty()) return;
    RowWrite lines(session, "Apu");
    lines.column("Apu_CtaDes", valor::Texto, name);
    lines.update(" WHERE Apu_IdCta = " + id + " AND Apu_CtaDes=''");
}

std::int64_t frmPlanCtas::insertarCuenta() const {
    RowWrite account(instanciaActual().sesion(), "PCta");
    describirCuenta(account);
    refusingSilently([&] { account.insert(); });
    const std::int64_t id = read("SELECT MAX(Pcta_Id) FROM PCta")->cell(0, 0).integer();
    requireUnique(*Ayuda.Conexion, "PCta", "PCta_Cta", Text1(Codigo).Text);
    return id;
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

void frmPlanCtas::borrar() {
    if (text::trim(Text1(Codigo).Text).empty()) return;
    if (!confirmInPlace("Desea eliminar la cuenta indicada", message::Question, sTituloVentana)) return;
    if (!confirmInPlace("ATENCION: Confirma que desea eliminar la cuenta seleccionada", message::Critical,
                        sTituloVentana))
        return;
    deleteRows(instanciaActual().sesion(), "PCta", " WHERE PCta_Id = " + quoted(std::to_string(nIdActual)));
    LimpiarPantalla();
    setFocus(Text1(Codigo));
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
