#include "app/frmIdentificador.h"

namespace FendaMaestros {

frmIdentificador::frmIdentificador(std::string caption, std::string fieldCaption, std::string commandCaption,
                                   std::string hint, Rule rule)
    : rule_(std::move(rule)), Label1(std::move(fieldCaption)), cmdComprobar(std::move(commandCaption)) {
    Caption = sTituloVentana = std::move(caption);
    lblResultado.Caption = std::move(hint);
    add(Label1, "Label1");
    add(Text1, "Text1");
    add(lblResultado, "lblResultado");
    add(cmdComprobar, "cmdComprobar");
    add(cmdSalir, "cmdSalir");
    editField(Text1);
    cmdComprobar.Click = [this] { comprobar(); };
    cmdSalir.Click = [this] { unload(); };
    layOut(arrange::column({arrange::fields({arrange::field(Label1, Text1)}), arrange::plain(lblResultado),
                            arrange::buttons({&cmdComprobar, &cmdSalir})}));
}

void frmIdentificador::onLoad() {
    Pantalla::onLoad();
    Text1.MaxLength = 40;
}

void frmIdentificador::comprobar() {
    lblResultado.Caption = rule_(Text1.Text);
    setFocus(Text1);
}

}  // namespace FendaMaestros
