#include "chart/CodigosCuenta.h"
#include "chart/frmPlanCtas.h"
#include "taxid/Explicacion.h"
#include "taxid/frmNif.h"
#include "toolkit/Raised.h"
#include "toolkit/Text.h"
#include "ui/SessionAccess.h"

/// The fields of the sub-account screen: what is typed into them and what happens when they are left.
namespace FendaMaestros {

namespace {

constexpr int documentLength = 15;
constexpr int identityLength = 100;

}  // namespace

void frmPlanCtas::prepararCampos() {
    for (const int field : {NombreAsociada, NombreIrpf}) Text1(field).MaxLength = nameLength;
    Text1(Documento).MaxLength = documentLength;
    Text1(NombreNif).MaxLength = identityLength;
    prepararCodigos();

    Text1(Documento).Tag = "Nif";
    for (const int number : {2, 1})
        Text1(Documento).Searches.push_back({{key::F(number)}, "Buscar la identidad por nombre"});
    editField(
        Text1(Documento), [this] { dejarNif(); }, [this] { sNifAnterior = Text1(Documento).Text; });
    for (const int field : {NombreAsociada, NombreNif, NombreIrpf}) {
        Text1(field).Locked = true;
        Text1(field).TabStop = false;
        editField(Text1(field));
    }
}

void frmPlanCtas::prepararCodigos() {
    for (const int index : {Codigo, Asociada, Irpf}) {
        prepararCodigo(index);
        TextBox& field = Text1(index);
        field.Change = [this, &field, index] {
            // The point of the number keys serves as the comma.
            field.Text = text::replaced(field.Text, ".", ",");
            mostrarEstado(index);
        };
    }
    for (const int index : {Asociada, Irpf}) editField(Text1(index), [this, index] { dejarCuentaAsociada(index); });
}

void frmPlanCtas::mostrarEstado(int field) {
    tell(aviso.texto(Text1(field).Text, nPlan, [this, field] { return codigoCompleto(field); }));
}

void frmPlanCtas::quitarEstado() {
    tell(situacion());
    aviso.dejado();
}

std::string frmPlanCtas::codigoCompleto(int field) const {
    const std::string& typed = Text1(field).Text;
    if (field != Codigo || !asksForNextCode(typed)) return completedCode(typed, digitos());
    const std::string prefix = typed.substr(0, typed.size() - 1);
    return nextCode(read(highestCodeSql(prefix))->cell(0, 0), prefix, digitos()).code;
}

void frmPlanCtas::dejarCodigo() {
    quitarEstado();
    if (!Text1(Codigo).Text.empty()) cambiandoCuenta([this] { buscarCodigo(); });
}

void frmPlanCtas::buscarCodigo() {
    const std::string typed = Text1(Codigo).Text;
    if (asksForNextCode(typed)) {
        std::string prefix = typed.substr(0, typed.size() - 1);
        return msNuevaCuenta(prefix, 0, true);
    }

    std::string code = completedCode(typed, digitos());
    Text1(Codigo).Text = code;
    const bool accepted = text::trim(code).empty() || msValidaCuentaPlan(code, nPlan, true);
    if (awaitsRelease()) markPendingMessage('E');
    if (!accepted) return setFocus(Text1(Codigo));
    if (cmdNueva.Visible) return;
    if (CargarCuenta(0, Codigo, code, 0) != Hallazgo::NoEncontrada) return;
    markPendingMessage('E');
    if (confirm("Código de cuenta no existe, desea crear una nueva cuenta"))
        msNuevaCuenta(code, 0, false);
    else
        setFocus(Text1(Codigo));
}

void frmPlanCtas::dejarCuentaAsociada(int field) {
    quitarEstado();
    TextBox& account = Text1(field);
    if (account.Text.empty()) {
        if (field == Asociada) nIdCtaAso = 0;
        return;
    }
    account.Text = completedCode(account.Text, digitos());
    if (CargarCuenta(0, field, account.Text, 0) == Hallazgo::NoEncontrada) warn("Código de cuenta no existe", account);
    tell(situacion());
}

void frmPlanCtas::dejarNif() {
    const std::string typed = Text1(Documento).Text;
    if (typed.empty()) {
        nIdNif = 0;
        return;
    }
    if (typed == sNifAnterior && nIdNif != 0) return;
    nIdNif = BuscarNif(typed);
    if (nIdNif >= 0) return;

    nIdNif = 0;
    // The record says the same of what is created; here it is in time for a No.
    const IdentifierExplanation explained = explainIdentifier(Text1(Documento).Text);
    if (adviceKind(explained) == StatusKind::Warning) tellBehind(advice(explained), StatusKind::Warning);
    markPendingMessage('3');
    const bool wanted = ask("Nif no encontrado, desea crearlo",
                            message::YesNo + message::Question + message::SecondIsDefault, {}) == Answer::Yes;
    if (!wanted) {
        Text1(Documento).Text.clear();
        return setFocus(Text1(Documento));
    }
    {
        const Raised inRecord(bEnFichaNif);
        frmNif(Text1(Documento).Text, nombreParaFicha()).show();
    }
    setFocus(Text1(Documento));
}

}  // namespace FendaMaestros
