#include "chartreports/frmInfPlanGc.h"

#include <array>

#include "chartreports/FiltroPgc.h"
#include "ui/SessionAccess.h"

namespace FendaMaestros {

frmInfPlanGc::frmInfPlanGc()
    : PantallaInforme({NombreBuscado, Desde, NombreDesde, Hasta, NombreHasta}, {0, 1, 2, 3, 4, 5, 6}) {
    Caption = sTituloVentana = "Informes del Plan General Contable";
    disponer();
}

void frmInfPlanGc::disponer() {
    static constexpr std::array captions{
        "Tipo de informe", "Plan", "Sector", "Desde Codigo Cuenta", "Hasta Codigo Cuenta", "Con el nombre de cuenta",
        "Masa Patrimonial"};
    for (std::size_t i = 0; i < captions.size(); ++i) Label1(static_cast<int>(i)).Caption = captions[i];

    add(Label1);
    add(cboTipo, "cboTipo");
    add(cboPlan, "cboPlan");
    add(cboPGC, "cboPGC");
    for (const int field : {Desde, NombreDesde, Hasta, NombreHasta, NombreBuscado})
        add(Text1(field), "Text1(" + std::to_string(field) + ")");
    add(Check2, "Check2");
    add(cboMasas.controls());
    add(cmdIniciar, "cmdIniciar");
    add(dbg, "dbg");
    add(barProgreso, "barProgreso");
    add(cmdInforme, "cmdInforme");
    add(cmdExcel, "cmdExcel");
    add(cmdSalir, "cmdSalir");

    using namespace arrange;
    layOut(column({
        row({fields({
                 field(Label1(0), cboTipo),
                 field(Label1(3), {plain(Text1(Desde)), plain(Text1(NombreDesde))}),
                 field(Label1(4), {plain(Text1(Hasta)), plain(Text1(NombreHasta))}),
                 field(Label1(5), {plain(Text1(NombreBuscado)), plain(Check2)}),
             }),
             column({fields({
                         field(Label1(1), cboPlan),
                         field(Label1(2), cboPGC),
                         field(Label1(6), {plain(cboMasas.controls()(0)), plain(cboMasas.controls()(1))}),
                     }),
                     buttons({&cmdIniciar})})}),
        filling(dbg),
        row({plain(barProgreso), buttons({&cmdInforme, &cmdExcel, &cmdSalir})}),
    }));
}

void frmInfPlanGc::CargarCombos() {
    for (const char* type : {"Informe Cuentas", "Informe por Nombre", "Informe por Masas"}) cboTipo.AddItem(type);
    cboTipo.setListIndex(0);
    cboPlan.AddItem("2008");
    cboPlan.setListIndex(0);
    cboPGC.AddItem("General");
    cboPGC.setListIndex(0);
    cboMasas.load("Todas", *read("SELECT * FROM KXComun.dbo.Masas WHERE Masas_Plan = 2008 ORDER BY Masas_Id"),
                  "Masas_Des", "mASAS_Id");
}

PantallaInforme::Consulta frmInfPlanGc::consulta(std::int16_t nColumna, bool bAsc) {
    const int column = nColumna == -1 ? columnaPorDefecto() : nColumna;
    const FiltroPgc filter{.plan = cboPlan.Text(),
                           .desde = Text1(Desde).Text,
                           .hasta = Text1(Hasta).Text,
                           .masa = cboMasas.followChoice(),
                           .nombre = Text1(NombreBuscado).Text,
                           .enCualquierParte = Check2.Value()};
    return {.sql = sqlListadoPgc(filter, column, bAsc),
            .orden = ordenPgc(column),
            .columnas = {{}, {"Cuenta", 1000, Alignment::Center}, {"Descripción", 9000}, {"Masa Patrimonial", 3300}}};
}

}  // namespace FendaMaestros
