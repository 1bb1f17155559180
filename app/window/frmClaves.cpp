#include "app/window/frmClaves.h"

#include "taxid/ClavesRetencion.h"
#include "toolkit/Text.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

frmClaves::frmClaves() {
    Caption = sTituloVentana = "Claves de retención";
    Text1.MaxLength = 4;
    add(Label1, "Label1");
    add(Text1, "Text1");
    add(Label2, "Label2");
    add(cboClave, "cboClave");
    add(Label3, "Label3");
    add(cboSubclave, "cboSubclave");
    add(lblAyuda, "lblAyuda");
    add(cmdSalir, "cmdSalir");
    editField(Text1);
    Text1.KeyPress = [this](int& keyAscii) { Ayuda.FiltrarTecla(Text1, keyAscii, false, 0); };
    Text1.Change = [this] { mostrarClaves(); };
    cboClave.Click = [this] { mostrarSubclaves(); };
    cmdSalir.Click = [this] { unload(); };
    layOut(arrange::column({arrange::fields({arrange::field(Label1, Text1), arrange::field(Label2, cboClave),
                                             arrange::field(Label3, cboSubclave)}),
                            arrange::plain(lblAyuda), arrange::buttons({&cmdSalir})}));
}

void frmClaves::onLoad() {
    Screen::onLoad();
    Text1.Text = instanciaActual().sesion().Parametros().Item("Par_Ejercicio").Value.text();
    mostrarClaves();
}

void frmClaves::mostrarClaves() { jCargaClavesRetencion(cboClave, "-", ejercicio(), false); }

void frmClaves::mostrarSubclaves() {
    jCargaClavesRetencion(cboSubclave, text::left(cboClave.Text(), 1), ejercicio(), false);
}

std::int16_t frmClaves::ejercicio() const { return static_cast<std::int16_t>(Variant(Text1.Text).integer()); }

}  // namespace FendaMaestros
