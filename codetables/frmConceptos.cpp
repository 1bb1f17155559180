#include "codetables/frmConceptos.h"

#include "codetables/frmConceptosAutomaticos.h"
#include "ui/RowWrite.h"

namespace FendaMaestros {

namespace {

bool isReserved(std::int64_t code) { return code >= 94 && code <= 99; }

}  // namespace

frmConceptos::frmConceptos()
    : PantallaCodigo(
          {
              .ventana = "Fichero maestro de Conceptos",
              .marco = "Listado de conceptos",
              .tituloVentana = "",
              .captionNueva = "&Nuevo concepto",
              .tituloExportacion = "Listado de conceptos",
              .ordenes = {{1, " ORDER BY Conce_Cod", "Código "}, {2, " ORDER BY Conce_Des", "Descripción "}},
              .columnas = {{""}, {"Código ", 1200, Alignment::Center}, {"Descripción ", 6500}, {""}},
          },
          {
              .tabla = "KXComun.dbo.Conceptos",
              .columnaId = "Conce_Id",
              .columnaCodigo = "Conce_Cod",
              .columnaDes = "Conce_Des",
              .campoCodigo = "Conce_Cod",
              .campoDes = "conce_des",
              .pregunta = "Codigo de concepto no existe, desear crearlo nuevo",
              .avisoCodigo = "Debe indicar un codigo de concepto",
              .avisoDescripcion = "Debe indicar la descripción del concepto",
              .iconoAviso = message::Ok,
          }) {
    cmdAuto.Click = [] { frmConceptosAutomaticos().show(); };
    disponer({arrange::field(Label1(0), Text1(0)), arrange::field(Label1(1), Text1(1))}, &cmdAuto, "cmdAuto");
}

std::string frmConceptos::consulta() const { return "SELECT * FROM KXComun.dbo.Conceptos WHERE Conce_Cod < 1000 "; }

void frmConceptos::mostrarFila() {
    PantallaCodigo::mostrarFila();
    if (!isReserved(rsConce->Fields("Conce_Cod").Value.integer())) return;
    cmdGuardar.Enabled = false;
    Text1(1).Locked = true;
    tell("Concepto reservado: no se modifica");
}

void frmConceptos::completarAlta(RowWrite& write) { write.column("Conce_Mod", valor::Entero, 0); }

void frmConceptos::imprimir() {
    DtrListadoConceptos report;
    imprimirListado(report, std::nullopt, "Fenda. Listado de conceptos contables", rsConce);
}

}  // namespace FendaMaestros
