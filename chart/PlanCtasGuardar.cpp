#include "chart/CodigosCuenta.h"
#include "chart/SubcuentaRecord.h"
#include "chart/frmPlanCtas.h"
#include "session/Literal.h"
#include "toolkit/Text.h"
#include "ui/RowWrite.h"
#include "ui/SessionAccess.h"
#include "ui/WorkContext.h"

/// The commands of the sub-account screen that write.
namespace FendaMaestros {

namespace {

/// Of a fiscal year, since what has been decided line by line in the others stays. One statement in the order of the
/// lines: one for each account would go through the whole journal for each. Of a repeated code, what any of its
/// accounts has.
constexpr const char* assignment =
    "UPDATE Apu SET (Apu_IdCen, Apu_IdDpto) = (SELECT "
    "isnull(MAX(CASE WHEN PCta_IdCen <> 0 THEN PCta_IdCen END), Apu_IdCen), "
    "isnull(MAX(CASE WHEN PCta_IdDpto <> 0 THEN PCta_IdDpto END), Apu_IdDpto) "
    "FROM PCta WHERE PCta_Cta = Apu_Cta AND PCta_Subcuenta = 1) WHERE Apu_Eje = 2009";

}  // namespace

bool frmPlanCtas::comprobarGrabacion() {
    bool repeated = false;
    if (!intentar([&] { repeated = nIdActual == 0 && existeCodigo(); })) return false;
    if (repeated) {
        rechazarRepetida();
        return false;
    }
    if (faltaNif()) {
        avisarGrabacion("No ha indicado el Nif asociado");
        setFocus(Text1(Documento));
        return false;
    }
    bool linked = false;
    if (!intentar([&] { linked = completarAsociada(); })) return false;
    if (!linked) warn("Código de cuenta no existe", Text1(Asociada));
    return linked;
}

bool frmPlanCtas::completarAsociada() {
    const std::string code = text::trim(Text1(Asociada).Text);
    if (code.empty() || nIdCtaAso != 0) return true;
    const auto account = leerCuenta(code, 0);
    if (account->Eof()) return false;
    nIdCtaAso = account->Fields("PCta_id").Value.integer();
    return true;
}

bool frmPlanCtas::existeCodigo() const {
    return !read("SELECT * FROM PCta WHERE PCta_Cta = " + literal(Text1(Codigo).Text))->Eof();
}

void frmPlanCtas::rechazarRepetida() {
    avisarGrabacion("Error en la grabación de la cuenta");
    if (bModoCrear) return cerrarConCuenta();
    replacing([this] { LimpiarPantalla(); });
    cmdNueva.Visible = false;
    setFocus(Text1(Codigo));
}

bool frmPlanCtas::faltaNif() const {
    return needsIdentity(Text1(Codigo).Text) && (text::trim(Text1(Documento).Text).empty() || nIdNif == 0);
}

void frmPlanCtas::describirCuenta(RowWrite& write) const {
    describirSubcuenta(write, {.codigo = Text1(Codigo).Text,
                               .nombre = text::trim(Text1(Nombre).Text),
                               .idMasa = cboMasas.chosenId(),
                               .idCentro = cboCentro.chosenId(),
                               .idDpto = cboDepar.chosenId(),
                               .idNif = nIdNif,
                               .asociada = text::trim(Text1(Asociada).Text),
                               .idAsociada = nIdCtaAso,
                               .irpf = text::trim(Text1(Irpf).Text),
                               .origen = nOrigen,
                               .idOrigen = nIdOrigen,
                               .activa = Option1.Value()});
}

void frmPlanCtas::escribirCambio(RowWrite& account, const std::string& where) {
    account.update(where);
    nombrarApuntes(instanciaActual().sesion(), nIdActual, text::trim(Text1(Nombre).Text));
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
    saveWithPatience([this] { Ayuda.Conexion->run({assignment, {}}); });
    ask("Proceso finalizado", message::Ok, {});
    unload();
}

}  // namespace FendaMaestros
