#include "chartreports/frmPlandeCuentas.h"

#include <array>

#include "chart/CodigosCuenta.h"
#include "chart/frmPlanCtas.h"
#include "chartreports/ColumnasCuentas.h"
#include "session/ErrorBd.h"
#include "session/ParametrosEmpresa.h"
#include "session/TypedText.h"
#include "toolkit/Format.h"
#include "toolkit/Text.h"
#include "ui/SessionAccess.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

/// Characters of an amount as it is shown, with room for any that is exact.
constexpr int amountLength = 20;

std::string codigoCompleto(const std::string& typed) {
    return completedCode(typed, digitosSubcuenta(instanciaActual().sesion().Parametros()));
}

}  // namespace

frmPlandeCuentas::frmPlandeCuentas()
    : PantallaInforme({NombreBuscado, Desde, NombreDesde, DesdeSaldo, HastaSaldo, Hasta, NombreHasta},
                      {0, 1, 2, 3, 4, 5, 6, 7}) {
    Caption = sTituloVentana = "Informes del Plan de cuentas";
    Frame1.Caption = "Estado";
    Option1(0).Caption = "Activas";
    Option1(1).Caption = "Inactivas";
    Option1(2).Caption = "Todas";
    Check1.Caption = "Informar del  saldo";
    lblAcu(2).Visible = false;

    cboTipo.Click = [this] { elegirTipo(); };
    dbg.ButtonClick = [this](int column) {
        if (column == columnaCodigo(tipoListado_)) abrirCuenta();
    };
    dbg.DblClick = [this] { abrirCuenta(); };
    for (const int code : {Desde, Hasta}) {
        editField(Text1(code), [this, code] { dejarCodigo(code); });
        Text1(code).Change = [this, code] { anunciarCodigo(code); };
    }
    for (const int amount : {DesdeSaldo, HastaSaldo}) {
        TextBox& field = Text1(amount);
        field.TextAlignment = Alignment::Right;
        field.MaxLength = amountLength;
        field.KeyPress = [this, &field](int& ascii) {
            Ayuda.FiltrarTecla(field, ascii, true, 0);
            if (ascii == key::Enter) ascii = 0;
        };
        editField(field, [this, amount] { dejarSaldo(amount); });
    }
    disponer();
    Option1(0).setValue(true);
}

void frmPlandeCuentas::disponer() {
    static constexpr std::array captions{
        "Tipo de informe", "Desde Codigo Cuenta", "Hasta Codigo Cuenta", "Con el nombre de cuenta", "Departamento",
        "Centro",          "Desde saldo",         "Hasta saldo"};
    for (std::size_t i = 0; i < captions.size(); ++i) Label1(static_cast<int>(i)).Caption = captions[i];

    add(Label1);
    add(cboTipo, "cboTipo");
    for (const int field : {Desde, NombreDesde, Hasta, NombreHasta, NombreBuscado})
        add(Text1(field), "Text1(" + std::to_string(field) + ")");
    add(Check2, "Check2");
    add(cboDepar.controls());
    add(cboCentro.controls());
    add(Frame1, "Frame1");
    add(Option1, &Frame1);
    for (const int field : {DesdeSaldo, HastaSaldo}) add(Text1(field), "Text1(" + std::to_string(field) + ")");
    add(Check1, "Check1");
    add(cmdIniciar, "cmdIniciar");
    add(dbg, "dbg");
    add(lblAcu);
    add(barProgreso, "barProgreso");
    add(cmdInforme, "cmdInforme");
    add(cmdExcel, "cmdExcel");
    add(cmdSalir, "cmdSalir");

    using namespace arrange;
    const auto list = [](Label& label, ListPair& pair) {
        return field(label, {plain(pair.controls()(0)), plain(pair.controls()(1))});
    };
    const auto code = [this](Label& label, int index) {
        return field(label, {plain(Text1(index)), plain(Text1(index + 1))});
    };
    layOut(column({
        fields({
            field(Label1(0), {plain(cboTipo), list(Label1(4), cboDepar), list(Label1(5), cboCentro)}),
            code(Label1(1), Desde),
            code(Label1(2), Hasta),
            field(Label1(3), {plain(Text1(NombreBuscado)), plain(Check2)}),
            field(Label1(6), {plain(Text1(DesdeSaldo)), field(Label1(7), Text1(HastaSaldo)), plain(Check1)}),
        }),
        row({framed(Frame1, {row({plain(Option1(0)), plain(Option1(1)), plain(Option1(2))})}), buttons({&cmdIniciar})}),
        filling(dbg),
        buttons({&lblAcu(2)}),
        row({plain(barProgreso), buttons({&cmdInforme, &cmdExcel, &cmdSalir})}),
    }));
}

void frmPlandeCuentas::CargarCombos() {
    for (const TipoInforme tipo :
         {TipoInforme::Subcuentas, TipoInforme::SubcuentasCompleto, TipoInforme::CuentasSubcuentas,
          TipoInforme::Departamentos, TipoInforme::Centros, TipoInforme::Nif})
        cboTipo.AddItem(nombreInforme(tipo));
    cboTipo.setListIndex(0);
    cboDepar.load("Todos", *read("SELECT * FROM Dpto ORDER BY Dpto_Des"), "Dpto_Des", "Dpto_Id");
    cboCentro.load("Todos", *read("SELECT * FROM Centro ORDER BY Centro_Des"), "Centro_Des", "Centro_Id");
}

// --- filters

void frmPlandeCuentas::elegirTipo() {
    Check1.Enabled = tipo() != TipoInforme::Nif;
    if (!Check1.Enabled) Check1.setValue(false);
}

void frmPlandeCuentas::anunciarCodigo(int field) {
    const std::string& typed = Text1(field).Text;
    tell(aviso_.texto(typed, planEnVigor(), [&typed] { return codigoCompleto(typed); }));
}

void frmPlandeCuentas::dejarCodigo(int field) {
    tell({});
    aviso_.dejado();
    TextBox& name = Text1(field + 1);
    if (text::trim(Text1(field).Text).empty()) return name.Text.clear();
    Text1(field).Text = codigoCompleto(Text1(field).Text);
    if (CargarCuenta(0, field, Text1(field).Text, 0) == Hallazgo::NoEncontrada) name.Text = cuentaInexistente;
}

void frmPlandeCuentas::dejarSaldo(int field) {
    Ayuda.SalirCampo(Text1(field), mascaraImporte, 0);
    const std::string& from = Text1(DesdeSaldo).Text;
    const std::string& to = Text1(HastaSaldo).Text;
    const auto lower = typed::amount(from);
    const auto upper = typed::amount(to);
    if (!lower || !upper || *lower <= *upper) return saldosAvisados_.clear();
    // Whoever leaves the same two again has been told, and may want them.
    const std::string bounds = from + "/" + to;
    if (std::exchange(saldosAvisados_, bounds) == bounds) return;
    warn("El importe hasta no puede ser superior al importe desde", Text1(HastaSaldo), message::Ok);
}

EstadoCuenta frmPlandeCuentas::estado() const {
    if (Option1(0).Value()) return EstadoCuenta::Activas;
    return Option1(1).Value() ? EstadoCuenta::Inactivas : EstadoCuenta::Todas;
}

FiltroCuentas frmPlandeCuentas::filtro() {
    return {.tipo = tipo(),
            .plan = planEnVigor(),
            .desde = Text1(Desde).Text,
            .hasta = Text1(Hasta).Text,
            .departamento = cboDepar.followChoice(),
            .centro = cboCentro.followChoice(),
            .desdeSaldo = Text1(DesdeSaldo).Text,
            .hastaSaldo = Text1(HastaSaldo).Text,
            .nombre = Text1(NombreBuscado).Text,
            .enCualquierParte = Check2.Value(),
            .estado = estado(),
            .conSaldo = Check1.Value()};
}

// --- the listing

PantallaInforme::Consulta frmPlandeCuentas::consulta(std::int16_t nColumna, bool bAsc) {
    return {.sql = sqlListado(filtro(), nColumna, bAsc),
            .orden = ordenCuentas(tipo(), nColumna),
            .columnas = columnasCuentas(tipo(), Check1.Value())};
}

void frmPlandeCuentas::leerTotal() {
    total_.clear();
    if (!Check1.Value()) return;
    const auto sum = read(sqlTotal(filtro()));
    total_ = "Total... " + (sum->Partial ? "sin calcular" : format(sum->cell(0, 0), mascaraTotal));
}

void frmPlandeCuentas::mostrarTotal() {
    tipoListado_ = tipo();
    conSaldoListado_ = Check1.Value();
    rangoListado_ =
        textoRango({Text1(Desde).Text, Text1(NombreDesde).Text}, {Text1(Hasta).Text, Text1(NombreHasta).Text});
    lblAcu(2).Visible = Check1.Value();
    if (Check1.Value()) lblAcu(2).Caption = total_;
    apagarInactivas();
}

void frmPlandeCuentas::apagarInactivas() {
    inactivas_.clear();
    // The state chooses among sub-accounts; accounts of the official plan are listed beside them whatever theirs is.
    const bool isMixed = estado() == EstadoCuenta::Todas || tipo() == TipoInforme::CuentasSubcuentas;
    if (!isMixed && estado() == EstadoCuenta::Inactivas) dbg.Inactive = [](int) { return true; };
    if (!isMixed) return;
    try {
        const auto rows = read("SELECT PCta_Id FROM PCta WHERE PCta_bActiva = 0");
        if (rows->Partial) return;
        for (int row = 0; row < rows->rowCount(); ++row) inactivas_.insert(rows->cell(row, 0).integer());
    } catch (const ErrorBd& error) {
        // The listing is there; what it is shown without is told when something is asked for again.
        if (error.kind() == ErrorBd::Kind::Lost) throw;
        return;
    }
    dbg.Inactive = [this](int row) { return inactivas_.contains(dbg.rows()->cell(row, 0).integer()); };
}

void frmPlandeCuentas::abrirCuenta() {
    if (rsListado && !rsListado->Eof()) abrirSubcuentas(rsListado->Fields("PCta_id").Value.integer());
}

void frmPlandeCuentas::imprimir() {
    const auto printer = instanciaActual().components().create<ReportPrinter>();
    printer->MyBd = instanciaActual().MyBd;
    printer->sAcotacion1 = rangoListado_;
    printer->svariables = conSaldoListado_ ? 1 : 0;
    if (const char* report = disenoInforme(tipoListado_)) printer->jshowInforme(report, sSQLListado);
}

}  // namespace FendaMaestros
