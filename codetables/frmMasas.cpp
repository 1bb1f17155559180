#include "codetables/frmMasas.h"

#include "codetables/DtrListado.h"
#include "toolkit/Text.h"
#include "ui/RowWrite.h"
#include "ui/SessionAccess.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

/// "2008" or "1990", worked out anew each time: the fiscal year is the session's.
std::string planEnVigorTexto() { return std::to_string(planEnVigor()); }

}  // namespace

frmMasas::frmMasas()
    : PantallaTabla(
          {
              .ventana = "Fichero maestro de  Masas",
              .marco = "Listado de masas",
              .tituloVentana = "",
              .captionNueva = "&Nueva masa",
              .tituloExportacion = "Listado de Masas Patrimoniales",
              .ordenes = {{1, " ORDER BY Masas_Des", "Descripción "}, {2, " ORDER BY Naturaleza", "Activo/Pasivo "}},
              .columnas = {{""}, {"Descripción ", 6500}, {"Activo/Pasivo", 1500}, {""}},
          },
          {0, 1}, {0, 1, 2}) {
    Text1(0).MaxLength = 2;
    Text1(0).TextAlignment = Alignment::Center;
    Text1(0).Enabled = false;
    Text1(1).MaxLength = 50;
    Label1(0).Caption = "Código";
    Label1(1).Caption = "Descripción";
    Label1(2).Caption = "Activo/Pasivo";

    add(Label1);
    add(Text1);
    add(cboMasas, "cboMasas");
    disponer({arrange::field(Label1(0), Text1(0)), arrange::field(Label1(1), Text1(1)),
              arrange::field(Label1(2), cboMasas)});
}

void frmMasas::onLoad() {
    for (const char* nature : {"Activo Fijo", "Activo Circulante", "Pasivo"}) cboMasas.AddItem(nature);
    cboMasas.setListIndex(0);
    PantallaTabla::onLoad();
}

std::string frmMasas::consulta() const {
    return "SELECT Masas_Id,Masas_Des, "
           "CASE Masas_AP "
           "WHEN 1 then 'Activo Fijo' "
           "WHEN 2 then 'Activo Circulante' "
           "WHEN 3 then 'Pasivo' "
           "END AS Naturaleza,Masas_AP "
           " FROM KXComun.dbo.Masas "
           "WHERE Masas_Plan = " +
           planEnVigorTexto();
}

void frmMasas::mostrarFila() {
    nIdActual = rsConce->Fields("mASAS_Id").Value.integer();
    Text1(1).Text = campo("Masas_Des");
    const auto nature = static_cast<int>(rsConce->Fields("Masas_AP").Value.integer());
    cboMasas.setListIndex(nature >= 1 && nature <= cboMasas.ListCount() ? nature - 1 : -1);
}

void frmMasas::vaciarFila() {
    vaciarTextos();
    cboMasas.setListIndex(0);
}

void frmMasas::NuevoCancelar() {
    PantallaTabla::NuevoCancelar();
    setFocus(Text1(1));
}

bool frmMasas::grabar() {
    if (text::trim(Text1(1).Text).empty()) {
        warn("Debe indicar la descripción de la masa", Text1(1), message::Ok);
        return false;
    }
    if (cboMasas.ListIndex() < 0) {
        warn("Debe indicar si la masa es de activo o de pasivo", cboMasas, message::Ok);
        return false;
    }
    RowWrite write(instanciaActual().sesion(), "KXComun.Dbo.Masas");
    write.column("Masas_Cod", valor::Texto, Text1(0).Text);
    write.column("Masas_Plan", valor::Numero, planEnVigorTexto());
    write.column("Masas_Des", valor::Texto, Text1(1).Text);
    write.column("Masas_AP", valor::Numero, cboMasas.ListIndex() + 1);
    if (nIdActual != 0)
        write.update(" WHERE Masas_Id = " + std::to_string(nIdActual));
    else
        write.insert();
    return true;
}

void frmMasas::imprimir() {
    DtrListadoMasas report;
    imprimirListado(report, "Listado de Masas Patrimoniales", "Fenda. Listado de Masas Patrimoniales", rsConce);
}

}  // namespace FendaMaestros
