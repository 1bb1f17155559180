#include "chart/frmPlanGC.h"

#include <array>

#include "session/Literal.h"
#include "toolkit/Text.h"
#include "ui/SessionAccess.h"

namespace FendaMaestros {

namespace {

/// Shorter codes are groups of the plan, which belong to no balance mass.
constexpr std::size_t shortestWithMass = 3;

constexpr std::array fieldLabels{"Código Cuenta ", "Nombre de la cuenta", "Incluida en el balance", "Plan",
                                 "Masa patrimonial"};

/// The name of the first balance line of a plan that an account's code is assigned to; empty when there is none.
std::string assignedLine(const std::string& code, const std::string& plan) {
    const auto assigned = read("SELECT * FROM KXComun.dbo.BalCtas WHERE BalC_Cta = " + literal(code));
    for (; !assigned->Eof(); assigned->MoveNext()) {
        const auto line = read(
            "SELECT * FROM KXComun.dbo.BalEstruc INNER JOIN KXComun.dbo.Balances ON Bal_Id=BalE_IdBal WHERE BalE_Id "
            "= " +
            std::to_string(assigned->Fields("BalC_IdBalE").Value.integer()));
        for (; !line->Eof(); line->MoveNext())
            if (line->Fields("Bal_Plan").Value.text() == plan)
                return text::trim(line->Fields("Bal_Des").Value.text()) + " - " +
                       text::trim(line->Fields("BalE_Des").Value.text());
    }
    return {};
}

}  // namespace

frmPlanGC::frmPlanGC(std::function<void()> abrirInforme) : PantallaCuenta({0, 1, 2}, {0, 1, 2, 3, 4}, true) {
    Caption = "Plan General de Cuentas";
    for (std::size_t i = 0; i < fieldLabels.size(); ++i) Label1(static_cast<int>(i)).Caption = fieldLabels[i];
    Text1(Balance).Locked = true;
    Text1(Balance).TabStop = false;
    editField(Text1(Balance));
    cmdInforme.Click = std::move(abrirInforme);
    componer();
}

void frmPlanGC::componer() {
    add(Label1);
    add(Text1);
    add(cboPlan, "cboPlan");
    add(cboPGC, "cboPGC");
    add(cboMasas.controls());
    add(navegacion.frame, "Frame1");
    add(navegacion.cmdNav, &navegacion.frame);
    add(lblAyuda, "lblAyuda");
    add(cmdGuardar, "cmdGuardar");
    add(cmdNueva, "cmdNueva");
    add(cmdBorrar, "cmdBorrar");
    add(cmdInforme, "cmdInforme");
    add(cmdSalir, "cmdSalir");

    using namespace arrange;
    layOut(column({
        fields({
            field(Label1(0), Text1(Codigo)),
            field(Label1(1), Text1(Nombre)),
            field(Label1(2), Text1(Balance)),
            field(Label1(3), {plain(cboPlan), plain(cboPGC)}),
            field(Label1(4), {plain(cboMasas.controls()(0)), plain(cboMasas.controls()(1))}),
        }),
        navegacion.arrangement(),
        plain(lblAyuda),
        buttons({&cmdGuardar, &cmdNueva, &cmdBorrar, &cmdInforme, &cmdSalir}),
    }));
}

void frmPlanGC::onLoad() {
    cboPlan.AddItem("2008");
    cboPlan.setListIndex(0);
    cboPGC.AddItem("General");
    cboPGC.setListIndex(0);
    PantallaCuenta::onLoad();
}

std::string frmPlanGC::condicion() const { return "PCta_Subcuenta = 0 AND PCta_Plan = " + cboPlan.Text(); }

std::string frmPlanGC::recorrido() const { return " WHERE PCta_Subcuenta=0 AND PCta_Plan = " + cboPlan.Text(); }

frmPlanGC::Hallazgo frmPlanGC::CargarCuenta(int mode, int /*field*/, const std::string& code, std::int64_t id) {
    const Hallazgo result = localizar(mode, code, id, rsCuenta);
    if (result == Hallazgo::NoEncontrada) {
        sinContarComoCambio([this] { cboMasas.chooseFirst(); });
        admitirMasa(code);
    }
    if (result != Hallazgo::Encontrada) return result;

    const std::string found = rsCuenta->Fields("pcta_cta").Value.text();
    cmdBorrar.Enabled =
        !conDiario("SUBSTRING(Apu_Cta,1," + std::to_string(text::length(found)) + ") = " + literal(found));
    Text1(Codigo).Text = found;
    Text1(Nombre).Text = rsCuenta->Fields("PCta_Des").Value.text();
    nIdActual = rsCuenta->Fields("PCta_id").Value.integer();
    rsMostrada = rsCuenta;
    mostrarMasa(found);
    Text1(Balance).Text = balanceDe(found);
    anotarMostrado();
    return Hallazgo::Encontrada;
}

void frmPlanGC::admitirMasa(const std::string& code) {
    cboMasas.controls()(0).Enabled = text::length(text::trim(code)) >= shortestWithMass;
}

void frmPlanGC::mostrarMasa(const std::string& code) {
    admitirMasa(code);
    if (cboMasas.controls()(0).Enabled)
        cboMasas.choose(rsCuenta->Fields("PCta_IdMasa").Value.integer());
    else
        cboMasas.chooseFirst();
}

std::string frmPlanGC::balanceDe(std::string code) const {
    for (; !code.empty(); code = text::left(code, text::length(code) - 1))
        if (std::string line = assignedLine(code, cboPlan.Text()); !line.empty()) return line;
    return "Cuenta no asignada a balance";
}

void frmPlanGC::dejarCodigo() {
    if (!Text1(Codigo).Text.empty()) cambiandoCuenta([this] { buscarCodigo(); });
}

void frmPlanGC::buscarCodigo() {
    const std::string typed = Text1(Codigo).Text;
    if (CargarCuenta(0, Codigo, typed, 0) != Hallazgo::NoEncontrada) return;
    markPendingMessage('E');
    if (confirm("Código de cuenta no existe, desea crear una nueva cuenta"))
        msNuevaCuenta(typed);
    else
        setFocus(Text1(Codigo));
}

void frmPlanGC::msNuevaCuenta(const std::string& code) {
    prepararAlta();
    mostrarCodigoNuevo(code, true);
}

void frmPlanGC::describirCuenta(RowWrite& write) const {
    write.column("PCta_Cta", valor::Texto, Text1(Codigo).Text);
    write.column("PCta_Des", valor::Texto, text::trim(Text1(Nombre).Text));
    write.column("PCta_IdMasa", valor::Numero, cboMasas.chosenId());
}

void frmPlanGC::describirAlta(RowWrite& write) const {
    write.column("PCta_Plan", valor::Numero, Variant(cboPlan.Text()).integer());
    write.column("PCta_PlanSec", valor::Numero, cboPGC.ListIndex() + 1);
    write.column("PCta_IdCen", valor::Numero, 0);
    write.column("PCta_IdDpto", valor::Numero, 0);
    write.column("Pcta_IdNif", valor::Numero, 0);
    write.column("PCta_IdCtaAso", valor::Numero, 0);
    write.column("PCta_CtaAso", valor::Nulo, "Null");
    write.column("PCta_SubCuenta", valor::Entero, 0);
    write.column("PCta_bActiva", valor::Entero, 1);
}

void frmPlanGC::terminarGrabacion() {
    cmdNueva.Visible = false;
    tell("Guardada " + Text1(Codigo).Text);
    setFocus(Text1(Codigo));
}

}  // namespace FendaMaestros
