#include "codetables/frmPaises.h"

#include "codetables/DtrListado.h"
#include "session/Literal.h"
#include "ui/RowWrite.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

frmPaises::frmPaises()
    : PantallaTabla(
          {
              .ventana = "Fichero maestro de Paises",
              .marco = "Listado de paises",
              .tituloVentana = "",
              .captionNueva = "&Nuevo concepto",
              .tituloExportacion = "Listado de Paises",
              .ordenes = {{0, " ORDER BY Pais_Cod", "Código "},
                          {1, " ORDER BY Pais_Nom", "Nombre "},
                          {2, " ORDER BY Pais_Aeat", "Cod.Aeat "}},
              .columnas = {{"Código ", 1200, Alignment::Center},
                           {"Nombre ", 5300},
                           {"Cod.Aeat ", 1200, Alignment::Center}},
          },
          {0, 1, 2}, {0, 1, 2}) {
    Text1(0).MaxLength = 3;
    Text1(0).TextAlignment = Alignment::Center;
    Text1(0).Locked = true;
    Text1(1).MaxLength = 50;
    Text1(2).MaxLength = 3;
    Text1(2).TextAlignment = Alignment::Center;
    Label1(0).Caption = "Código";
    Label1(1).Caption = "Nombre";
    Label1(2).Caption = "Cod.Aeat";

    add(Label1);
    add(Text1);
    disponer({arrange::field(Label1(0), Text1(0)), arrange::field(Label1(1), Text1(1)),
              arrange::field(Label1(2), Text1(2))});
}

std::string frmPaises::consulta() const { return "SELECT * FROM KXComun.dbo.Pais"; }

void frmPaises::mostrarFila() {
    Text1(0).Text = campo("Pais_Cod");
    Text1(1).Text = campo("Pais_Nom");
    Text1(2).Text = campo("Pais_Aeat");
}

bool frmPaises::grabar() {
    RowWrite write(instanciaActual().sesion(), "KXComun.dbo.Pais");
    write.column("Pais_Cod", valor::Texto, Text1(0).Text);
    write.column("Pais_Nom", valor::Texto, Text1(1).Text);
    write.column("Pais_Aeat", valor::Texto, Text1(2).Text);
    write.update(" WHERE Pais_Cod = " + literal(Text1(0).Text));
    return true;
}

void frmPaises::imprimir() {
    DtrListadoPaises report;
    imprimirListado(report, std::nullopt, "Fenda. Listado de paises", rsConce);
}

}  // namespace FendaMaestros
