#include "codetables/PantallaCodigo.h"

#include "session/Literal.h"
#include "toolkit/Text.h"
#include "ui/RowWrite.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

constexpr int codeLength = 2;
constexpr int descriptionLength = 50;

}  // namespace

PantallaCodigo::PantallaCodigo(TablaMaestra table, const TablaCodigo& code)
    : PantallaTabla(std::move(table), {0, 1}, {0, 1}), codigo_(code) {
    Text1(0).MaxLength = codeLength;
    Text1(0).TextAlignment = Alignment::Center;
    Text1(0).KeyPress = [this](int& ascii) { Ayuda.FiltrarTecla(Text1(0), ascii, false, 0); };
    Text1(1).MaxLength = descriptionLength;
    Label1(0).Caption = "Código";
    Label1(1).Caption = "Descripción";
    editField(Text1(0), [this] { buscarCodigo(); });

    add(Label1);
    add(Text1);
}

void PantallaCodigo::mostrarFila() {
    nIdActual = rsConce->Fields(codigo_.columnaId).Value.integer();
    Text1(0).Text = campo(codigo_.campoCodigo);
    Text1(1).Text = campo(codigo_.campoDes);
}

void PantallaCodigo::buscarCodigo() {
    const std::string typed = Text1(0).Text;
    if (typed.empty()) return;
    rsConce->Find(std::string(codigo_.campoCodigo) + " = " + literal(typed));
    if (!rsConce->Eof()) {
        Text1(0).Text = campo(codigo_.campoCodigo);
        return;
    }

    Text1(0).Text = typed;
    if (!confirm(codigo_.pregunta)) return CargarGrid(1, true);
    anotarMostrado();
    DataGrid1.Enabled = false;
    setFocus(Text1(1));
}

bool PantallaCodigo::grabar() {
    if (!text::isNumericCode(Text1(0).Text)) {
        warn(codigo_.avisoCodigo, Text1(0), codigo_.iconoAviso);
        return false;
    }
    if (text::trim(Text1(1).Text).empty()) {
        warn(codigo_.avisoDescripcion, Text1(1), codigo_.iconoAviso);
        return false;
    }
    RowWrite write(instanciaActual().sesion(), codigo_.tabla);
    write.column(codigo_.columnaCodigo, valor::Texto, Text1(0).Text);
    write.column(codigo_.columnaDes, valor::Texto, Text1(1).Text);
    if (nIdActual != 0) {
        write.update(std::string(" WHERE ") + codigo_.columnaId + " = " + std::to_string(nIdActual));
    } else {
        completarAlta(write);
        write.insert();
    }
    return true;
}

}  // namespace FendaMaestros
