#include "app/window/frmInicio.h"

namespace FendaMaestros {

frmInicio::frmInicio(Desktop& desktop) : DirectWindow(desktop) {
    Caption = sTituloVentana = "Para empezar";
    add(Frame1, "Frame1");
    add(lblCrear, "lblCrear", &Frame1);
    add(cmdCrear, "cmdCrear", &Frame1);
    add(Frame2, "Frame2");
    add(lblDemostracion, "lblDemostracion", &Frame2);
    add(cmdDemostracion, "cmdDemostracion", &Frame2);
    add(cmdAbrir, "cmdAbrir");
    add(cmdServidor, "cmdServidor");
    add(cmdSalir, "cmdSalir");
    cmdCrear.Click = [this] { elegir(Choice::Create); };
    cmdDemostracion.Click = [this] { elegir(Choice::Demonstration); };
    cmdAbrir.Click = [this] { elegir(Choice::OpenFolder); };
    cmdServidor.Click = [this] { elegir(Choice::OpenServer); };
    cmdSalir.Click = [this] { unload(); };
    layOut(arrange::column({arrange::framed(Frame1, {arrange::plain(cmdCrear), arrange::plain(lblCrear)}),
                            arrange::framed(Frame2, {arrange::plain(cmdDemostracion), arrange::plain(lblDemostracion)}),
                            arrange::buttons({&cmdAbrir, &cmdServidor, &cmdSalir})}));
}

void frmInicio::elegir(Choice choice) {
    choice_ = choice;
    unload();
}

}  // namespace FendaMaestros
