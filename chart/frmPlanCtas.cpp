#include "chart/frmPlanCtas.h"

#include <array>

#include "chart/BuscarCuentas.h"
#include "chart/CodigosCuenta.h"
#include "session/Literal.h"
#include "taxid/frmNif.h"
#include "toolkit/Raised.h"
#include "toolkit/Text.h"
#include "ui/SessionAccess.h"
#include "ui/Version.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

constexpr std::array fieldLabels = {"Código Cuenta ",
                                    "Nombre de la cuenta",
                                    "Cuenta de Ingreso/Gasto asociada",
                                    "Nif asociado (F2 Búsqueda)",
                                    "Cuenta de Irpf asociada",
                                    "Centro de Trabajo",
                                    "Departamento",
                                    "Masa patrimonial"};

}  // namespace

void abrirSubcuentas(std::int64_t nIdCuenta) {
    frmPlanCtas screen;
    screen.nIdInicial = nIdCuenta;
    screen.show();
}

frmPlanCtas::frmPlanCtas() : PantallaCuenta({0, 1, 2, 3, 4, 5, 6, 7}, {0, 1, 2, 3, 4, 5, 6, 7}, false) {
    for (std::size_t i = 0; i < fieldLabels.size(); ++i) Label1(static_cast<int>(i)).Caption = fieldLabels[i];
    Frame2.Caption = "Estado";
    Option1.Caption = "Activa";
    Option2.Caption = "Inactiva";
    cmdVerFicha.Click = [this] { verFicha(); };
    Frame3.Caption = "Diario";
    Command1.ToolTip =
        "Pone en los apuntes de 2009 el centro y el departamento de su cuenta, en lugar de los que tengan";
    Command1.GotFocus = [this] { tell(Command1.ToolTip); };
    Command1.LostFocus = [this] { tell(situacion()); };
    Command1.Click = [this] { asignarCentros(); };

    TypingHints = {"43,5 en un código: los ceros que faltan van en la coma",
                   "430, en el código de la cuenta: el siguiente código libre"};
    prepararCampos();
    componer();
    Option1.setValue(true);
}

void frmPlanCtas::componer() {
    add(Label1);
    add(Text1);
    add(cboCentro.controls());
    add(cboDepar.controls());
    add(cboMasas.controls());
    add(Frame2, "Frame2");
    add(Option1, "Option1", &Frame2);
    add(Option2, "Option2", &Frame2);
    add(navegacion.frame, "Frame1");
    add(navegacion.cmdNav, &navegacion.frame);
    add(lblAyuda, "lblAyuda");
    add(lblTeclas, "lblTeclas");
    add(cmdGuardar, "cmdGuardar");
    add(cmdNueva, "cmdNueva");
    add(cmdBorrar, "cmdBorrar");
    add(cmdVerFicha, "cmdVerFicha");
    add(Frame3, "Frame3");
    add(Command1, "Command1", &Frame3);
    add(cmdSalir, "cmdSalir");

    using namespace arrange;
    const auto list = [](Label& label, ListPair& pair) {
        return field(label, {plain(pair.controls()(0)), plain(pair.controls()(1))});
    };
    layOut(column({
        fields({
            field(Label1(0), Text1(Codigo)),
            field(Label1(1), Text1(Nombre)),
            field(Label1(2), {plain(Text1(Asociada)), plain(Text1(NombreAsociada))}),
            field(Label1(3), {plain(Text1(Documento)), plain(Text1(NombreNif))}),
            field(Label1(4), {plain(Text1(Irpf)), plain(Text1(NombreIrpf))}),
            list(Label1(5), cboCentro),
            list(Label1(6), cboDepar),
            list(Label1(7), cboMasas),
        }),
        row({
            framed(Frame2, {row({plain(Option1), plain(Option2)})}),
            navegacion.arrangement(),
            framed(Frame3, {row({plain(Command1)})}),
        }),
        plain(lblAyuda),
        plain(lblTeclas),
        buttons({&cmdGuardar, &cmdNueva, &cmdBorrar, &cmdVerFicha, &cmdSalir}),
    }));
}

std::size_t frmPlanCtas::digitos() { return digitosSubcuenta(instanciaActual().sesion().Parametros()); }

void frmPlanCtas::onLoad() {
    PantallaCuenta::onLoad();
    nPlan = planEnVigor();
    sTituloVentana = " Plan de Cuentas";
    Caption = "Plan de cuentas (" + std::to_string(nPlan) + ") (Versión " + componentVersion() + ")";
    for (const int field : {Codigo, Asociada, Irpf}) Text1(field).MaxLength = static_cast<int>(digitos());
    anotarMostrado();
    if (nIdInicial > 0) cambiandoCuenta([this] { CargarCuenta(0, Codigo, {}, nIdInicial); });
}

void frmPlanCtas::cargarListas() {
    cboCentro.load("Sin centro", *read("SELECT * FROM Centro ORDER BY Centro_Des"), "Centro_Des", "Centro_Id");
    cboDepar.load("Sin departamento", *read("SELECT * FROM Dpto ORDER BY Dpto_Des"), "Dpto_Des", "Dpto_Id");
}

void frmPlanCtas::onActivate() {
    PantallaCuenta::onActivate();
    if (!bEnFichaNif && !bEnBusqueda && (bModoCrear || nIdInicial > 0)) setFocus(Text1(Nombre));
}

void frmPlanCtas::buscarEnCampo(int mode, int field) {
    if (field == Documento)
        BuscarNif({});
    else if (CargarCuenta(mode, field, {}, 0) != Hallazgo::Encontrada)
        mostrarEstado(field);
}

void frmPlanCtas::LimpiarPantalla() {
    PantallaCuenta::LimpiarPantalla();
    cboCentro.chooseFirst();
    cboDepar.chooseFirst();
    nIdCtaAso = nIdNif = nIdOrigen = nOrigen = 0;
    anotarMostrado();
}

std::vector<std::string> frmPlanCtas::contenido() const {
    std::vector<std::string> typed = PantallaCuenta::contenido();
    for (const int field : {Asociada, Documento, Irpf}) typed.push_back(text::trim(Text1(field).Text));
    for (const ListPair* list : {&cboCentro, &cboDepar}) typed.push_back(list->chosenName());
    typed.push_back(std::to_string(nIdNif));
    typed.emplace_back(Option1.Value() ? Option1.Caption : Option2.Caption);
    return typed;
}

std::string frmPlanCtas::situacion() const {
    if (std::string unselected = PantallaCuenta::situacion(); !unselected.empty()) return unselected;
    const std::string& code = Text1(Codigo).Text;
    const bool shown = nIdActual != 0 || cmdNueva.Visible;
    std::string found;
    if (shown && text::length(code) != digitos())
        found = "El código " + code + " no tiene las " + std::to_string(digitos()) + " cifras de la empresa";
    const std::string unlisted = entradasSinLista();
    return found + (found.empty() || unlisted.empty() ? "" : " · ") + unlisted;
}

std::string frmPlanCtas::entradasSinLista() const {
    if (!rsMostrada) return {};
    const struct {
        const char* name;
        const char* column;
        const ListPair& list;
    } entries[] = {{"centro", "Pcta_IdCen", cboCentro},
                   {"departamento", "Pcta_IdDpto", cboDepar},
                   {"masa", "PCta_IdMasa", cboMasas}};
    std::string missing;
    for (const auto& [name, column, list] : entries) {
        const std::int64_t id = rsMostrada->Fields(column).Value.integer();
        if (list.has(id)) continue;
        missing += (missing.empty() ? "" : " · ") + std::string("Su ") + name + " " + std::to_string(id) +
                   " no está en la lista: al guardar quedará «" + list.chosenName() + "»";
    }
    return missing;
}

void frmPlanCtas::prepararCreacion(std::string& sCta, std::int32_t nNif, bool bCalcula) {
    load();
    navegacion.frame.Enabled = false;
    bModoCrear = true;
    Text1(Codigo).Text = sCta;
    msNuevaCuenta(sCta, nNif, bCalcula);
}

void frmPlanCtas::msNuevaCuenta(std::string& sCta, std::int32_t nNif, bool bCalcula) {
    prepararAlta();
    Option1.setValue(true);
    nIdNif = nNif;
    if (nIdNif != 0) mostrarNif();
    // The caller's word counts even for an identity that the register does not have.
    nIdNif = nNif;
    if (bCalcula) {
        const auto highest = read(highestCodeSql(sCta));
        const NextCode next = nextCode(highest->cell(0, 0), sCta, digitos());
        if (next.refusal.empty())
            sCta = next.code;
        else
            ask(next.refusal, message::Exclamation, sTituloVentana);
    }
    mostrarCodigoNuevo(sCta, !bCalcula);
    nOrigen = 0;
    tell(situacion());
}

void frmPlanCtas::cancelarNueva() {
    if (bModoCrear) return unload();
    PantallaCuenta::cancelarNueva();
}

void frmPlanCtas::verFicha() {
    if (rsCuenta->Eof()) return;
    frmNif(Text1(Documento).Text, nombreParaFicha()).show();
    if (nIdNif != 0) sinContarComoCambio([this] { mostrarNif(); });
}

std::string frmPlanCtas::nombreParaFicha() const {
    return cmdNueva.Visible ? text::trim(Text1(Nombre).Text) : std::string();
}

}  // namespace FendaMaestros
