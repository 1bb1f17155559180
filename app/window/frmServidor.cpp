#include "app/window/frmServidor.h"

#include "toolkit/Text.h"

namespace FendaMaestros {

frmServidor::frmServidor(ServerConnector connect) : connect_(std::move(connect)) {
    Caption = sTituloVentana = "Abrir en un servidor";
    add(Label1, "Label1");
    add(Text1, "Text1");
    add(Label2, "Label2");
    add(cboEmpresa, "cboEmpresa");
    add(lblAyuda, "lblAyuda");
    add(cmdProbar, "cmdProbar");
    add(cmdAbrir, "cmdAbrir");
    add(cmdSalir, "cmdSalir");
    editField(Text1);
    cboEmpresa.Enabled = cmdAbrir.Enabled = false;
    // What was found belongs to the connection that was tried.
    Text1.Change = [this] {
        cboEmpresa.Clear();
        cboEmpresa.Enabled = cmdAbrir.Enabled = false;
    };
    cmdProbar.Click = [this] { conectar(); };
    cmdAbrir.Click = [this] { abrir(); };
    cmdSalir.Click = [this] { unload(); };
    layOut(arrange::column({arrange::fields({arrange::field(Label1, Text1), arrange::field(Label2, cboEmpresa)}),
                            arrange::plain(lblAyuda), arrange::buttons({&cmdProbar, &cmdAbrir, &cmdSalir})}));
}

void frmServidor::conectar() {
    try {
        const BusyPointer busy(desktop());
        place_ = connect_(text::trim(Text1.Text));
    } catch (const std::exception& failure) {
        return warn(failure.what(), Text1);
    }
    cboEmpresa.Clear();
    for (const std::string& name : place_.names) cboEmpresa.AddItem(name);
    cboEmpresa.Enabled = cmdAbrir.Enabled = true;
    cboEmpresa.setListIndex(0);
    const std::size_t found = place_.names.size();
    tell("Se ha conectado. Hay " + (found == 1 ? "una empresa." : std::to_string(found) + " empresas."));
    setFocus(cmdAbrir);
}

void frmServidor::abrir() {
    chosen_ = place_.names.at(static_cast<std::size_t>(cboEmpresa.ListIndex()));
    unload();
}

}  // namespace FendaMaestros
