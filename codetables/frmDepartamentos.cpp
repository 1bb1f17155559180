#include "codetables/frmDepartamentos.h"

namespace FendaMaestros {

frmDepartamentos::frmDepartamentos()
    : PantallaCodigo(
          {
              .ventana = "Fichero maestro de  Departamentos",
              .marco = "Listado de departamentos",
              .tituloVentana = "Maestro de Departamentos",
              .captionNueva = "&Nuevo departamento",
              .tituloExportacion = "Listado de departamentos",
              .ordenes = {{1, " ORDER BY Dpto_Cod", "Código "}, {2, " ORDER BY Dpto_Des", "Descripción "}},
              .columnas = {{""}, {"Código ", 1200, Alignment::Center}, {"Descripción ", 6500}},
          },
          {
              .tabla = "Dpto",
              .columnaId = "Dpto_Id",
              .columnaCodigo = "Dpto_Cod",
              .columnaDes = "Dpto_Des",
              .campoCodigo = "Codigo",
              .campoDes = "Des",
              .pregunta = "Codigo de departamento no existe, desear crearlo nuevo",
              .avisoCodigo = "Debe indicar un codigo de departamento",
              .avisoDescripcion = "Debe indicar la descripción del departamento",
              .iconoAviso = message::Exclamation,
          }) {
    disponer({arrange::field(Label1(0), Text1(0)), arrange::field(Label1(1), Text1(1))});
}

std::string frmDepartamentos::consulta() const { return "SELECT Dpto_Id,Dpto_Cod as Codigo,Dpto_Des AS Des FROM Dpto"; }

void frmDepartamentos::imprimir() {
    DtrListadoDepartamentos report;
    imprimirListado(report, "Listado de departamento", "Fenda. Listado de departamentos", rsConce);
}

}  // namespace FendaMaestros
