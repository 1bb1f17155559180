#include "chart/BuscarCuentas.h"
#include "chart/frmPlanCtas.h"
#include "session/Literal.h"
#include "taxid/BuscarNif.h"
#include "taxid/ExpresionNombre.h"
#include "taxid/Validacion.h"
#include "toolkit/Text.h"
#include "ui/SessionAccess.h"

/// How the sub-account screen finds and shows accounts and tax identities.
namespace FendaMaestros {

frmPlanCtas::Hallazgo frmPlanCtas::CargarCuenta(int mode, int field, const std::string& code, std::int64_t id) {
    const bool deletable = cmdBorrar.Enabled;
    std::shared_ptr<Recordset> linked;
    const auto& row = field == Codigo ? rsCuenta : linked;
    const Hallazgo result = localizar(mode, code, id, field == Codigo ? rsCuenta : linked);
    if (result == Hallazgo::NoEncontrada) nIdOrigen = nIdCtaAso = 0;
    if (result != Hallazgo::Encontrada) return result;

    const std::string found = row->Fields("pcta_cta").Value.text();
    // An account found for another field may take the delete from the one shown, but not give it.
    cmdBorrar.Enabled = !conDiario("Apu_Cta = " + literal(found)) && (field == Codigo || deletable);
    Text1(field).Text = found;
    Text1(field + 1).Text = row->Fields("PCta_Des").Value.text();
    if (field == Asociada) nIdCtaAso = row->Fields("PCta_id").Value.integer();
    if (field == Codigo) mostrarCuenta();
    return Hallazgo::Encontrada;
}

void frmPlanCtas::mostrarCuenta() {
    const auto number = [this](const char* column) { return rsCuenta->Fields(column).Value.integer(); };
    nIdActual = number("PCta_id");
    rsMostrada = rsCuenta;
    nIdNif = number("Pcta_IdNif");
    nIdCtaAso = number("PCta_IdCtaAso");
    nOrigen = number("Pcta_Origen");
    nIdOrigen = number("Pcta_IdOrigen");
    (number("Pcta_bActiva") != 0 ? Option1 : Option2).setValue(true);
    mostrarAsociada();
    mostrarIrpf();
    cboDepar.choose(number("Pcta_IdDpto"));
    cboCentro.choose(number("Pcta_IdCen"));
    cboMasas.choose(number("PCta_IdMasa"));
    mostrarNif();
    anotarMostrado();
}

void frmPlanCtas::mostrarAsociada() {
    Text1(Asociada).Text.clear();
    Text1(NombreAsociada).Text.clear();
    if (nIdCtaAso > 0) {
        const auto account =
            read("SELECT * FROM PCta WHERE PCta_Subcuenta = 1 AND PCta_Id = " + std::to_string(nIdCtaAso));
        if (!account->Eof()) {
            Text1(Asociada).Text = account->Fields("pcta_cta").Value.text();
            Text1(NombreAsociada).Text = account->Fields("PCta_Des").Value.text();
            return;
        }
    }
    nIdCtaAso = 0;
}

void frmPlanCtas::mostrarIrpf() {
    Text1(Irpf).Text.clear();
    Text1(NombreIrpf).Text.clear();
    const Variant code = rsCuenta->Fields("PCta_CtaIrpfAso").Value;
    if (code.isNull()) return;
    const auto account = read("SELECT * FROM PCta WHERE PCta_Subcuenta = 1 AND PCta_Cta = " + literal(code.text()));
    if (account->Eof()) return;
    Text1(Irpf).Text = account->Fields("pcta_cta").Value.text();
    Text1(NombreIrpf).Text = account->Fields("PCta_Des").Value.text();
}

void frmPlanCtas::mostrarNif() {
    Text1(Documento).Text.clear();
    Text1(NombreNif).Text.clear();
    const auto identity = read("SELECT Nif_Doc AS Doc," + fnExpresionNombre() +
                               " FROM KXComun.dbo.Nif WHERE Nif_Id = " + std::to_string(nIdNif));
    if (identity->Eof()) {
        nIdNif = 0;
        return;
    }
    Text1(Documento).Text = identity->Fields("Doc").Value.text();
    Text1(NombreNif).Text = identity->Fields("nombre").Value.text();
}

std::int64_t frmPlanCtas::BuscarNif(std::string document) {
    const std::string number = text::upper(text::trim(document));
    if (!number.empty() && text::isDigit(number.front())) Text1(Documento).Text = document = conLetra(number);
    nOrigen = 0;
    return msBuscaNifGeneral(document);
}

std::int64_t frmPlanCtas::msBuscaNifGeneral(const std::string& document) {
    std::int64_t id = 0;
    if (document.empty()) {
        id = buscarNifPorNombre(Ayuda, {.nombre = "Nif", .titulo = "Búsqueda de Nif albabética"});
        if (id == 0) return 0;
    }
    const auto identity = read("SELECT *," + fnExpresionNombre() + " FROM KXComun.dbo.Nif WHERE " +
                               (id != 0 ? "Nif_Id = " + std::to_string(id) : "Nif_Doc = " + literal(document)));
    if (identity->Eof()) return -1;
    nIdNif = identity->Fields("Nif_Id").Value.integer();
    Text1(Documento).Text = identity->Fields("Nif_Doc").Value.text();
    Text1(NombreNif).Text = identity->Fields("nombre").Value.text();
    return nIdNif;
}

}  // namespace FendaMaestros
