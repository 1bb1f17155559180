#include "app/window/frmIdentificador.h"

#include "toolkit/Text.h"

namespace FendaMaestros {

frmIdentificador::frmIdentificador(std::string caption, std::string fieldCaption, std::string commandCaption, Rule rule,
                                   std::string hint)
    : rule_(std::move(rule)),
      Label1(std::move(fieldCaption)),
      lblResultado(std::move(hint)),
      cmdComprobar(std::move(commandCaption)) {
    Caption = sTituloVentana = std::move(caption);
    add(Label1, "Label1");
    add(Text1, "Text1");
    add(lblResultado, "lblResultado");
    add(cmdComprobar, "cmdComprobar");
    add(cmdSalir, "cmdSalir");
    Text1.MaxLength = 40;
    editField(Text1);
    cmdComprobar.Click = [this] { comprobar(); };
    cmdSalir.Click = [this] { unload(); };
    layOut(arrange::column({arrange::fields({arrange::field(Label1, Text1)}), arrange::plain(lblResultado),
                            arrange::buttons({&cmdComprobar, &cmdSalir})}));
}

void frmIdentificador::comprobar() {
    Finding found = rule_(text::trim(Text1.Text));
    lblResultado.Caption = std::move(found.text);
    tell(std::move(found.advice), found.kind);
    setFocus(Text1);
    Text1.AllSelected = true;
}

}  // namespace FendaMaestros
