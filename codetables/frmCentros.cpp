#include "codetables/frmCentros.h"

namespace FendaMaestros {

frmCentros::frmCentros()
    : PantallaCodigo(
          {
              .ventana = "Fichero maestro de Centros de trabajo",
              .marco = "Listado de centros",
              .tituloVentana = "Mantenimiento de Centros de Trabajo",
              .captionNueva = "&Nuevo centro",
              .tituloExportacion = "Listado de Centros de trabajo",
              .ordenes = {{1, " ORDER BY Centro_Cod", "Código "}, {2, " ORDER BY Centro_Des", "Descripción "}},
              .columnas = {{""}, {"Código ", 1200, Alignment::Center}, {"Descripción ", 6500}},
          },
          {
              .tabla = "Centro",
              .columnaId = "Centro_Id",
              .columnaCodigo = "Centro_Cod",
              .columnaDes = "Centro_Des",
              .campoCodigo = "Codigo",
              .campoDes = "Des",
              .pregunta = "Codigo de centro no existe, desear crearlo nuevo",
              .avisoCodigo = "Debe indicar un codigo de centro",
              .avisoDescripcion = "Debe indicar la descripción del centro",
              .iconoAviso = message::Exclamation,
          }) {
    disponer({arrange::field(Label1(0), Text1(0)), arrange::field(Label1(1), Text1(1))});
}

std::string frmCentros::consulta() const {
    return "SELECT Centro_Id, Centro_Cod AS Codigo, Centro_Des as Des FROM Centro";
}

void frmCentros::imprimir() {
    DtrListadoDepartamentos report;
    imprimirListado(report, "Listado de centros de trabajo", "Fenda. Listado de centros de trabajo", rsConce);
}

}  // namespace FendaMaestros
