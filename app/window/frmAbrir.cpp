#include "app/window/frmAbrir.h"

#include <stdexcept>

#include "toolkit/Text.h"

namespace FendaMaestros {

frmAbrir::frmAbrir(Desktop& desktop, Place::Kind kind, PlaceOpener reach)
    : DirectWindow(desktop), kind_(kind), reach_(std::move(reach)) {
    const bool onServer = kind_ == Place::Kind::Server;
    Caption = sTituloVentana = onServer ? "Abrir en un servidor" : "Abrir una empresa";
    Label1.Caption = onServer ? "Conexión" : "Carpeta";
    cmdProbar.Caption = onServer ? "&Probar la conexión" : "&Buscar empresas";
    lblAyuda.Caption =
        onServer
            ? "Por ejemplo, host=servidor dbname=contabilidad, o service=conta.\nLa contraseña se toma de donde la "
              "guarda su usuario:\nel fichero .pgpass, PGPASSWORD o el servicio."
            : "La carpeta de datos donde están las empresas.\nTambién sirve la de una copia de seguridad.";
    add(Label1, "Label1");
    add(Text1, "Text1");
    cmdExaminar.Visible = !onServer;
    add(Label2, "Label2");
    add(cboEmpresa, "cboEmpresa");
    add(lblAyuda, "lblAyuda");
    add(cmdProbar, "cmdProbar");
    add(cmdExaminar, "cmdExaminar");
    add(cmdAbrir, "cmdAbrir");
    add(cmdSalir, "cmdSalir");
    editField(Text1);
    cboEmpresa.Enabled = cmdAbrir.Enabled = false;
    Text1.Change = [this] { olvidar(); };
    cmdExaminar.Click = [this] { examinar(); };
    cmdProbar.Click = [this] { probar(); };
    cmdAbrir.Click = [this] { abrir(); };
    cmdSalir.Click = [this] { unload(); };
    layOut(arrange::column({arrange::fields({arrange::field(Label1, Text1), arrange::field(Label2, cboEmpresa)}),
                            arrange::plain(lblAyuda),
                            arrange::buttons({&cmdExaminar, &cmdProbar, &cmdAbrir, &cmdSalir})}));
}

void frmAbrir::examinar() {
    const auto folder = desktop().chooseFolder("Carpeta de datos", Text1.Text);
    if (!folder) return;
    Text1.Text = *folder;
    probar();
}

void frmAbrir::olvidar() {
    cboEmpresa.Clear();
    cboEmpresa.Enabled = cmdAbrir.Enabled = false;
}

void frmAbrir::probar() {
    olvidar();
    const Place place{kind_, kind_ == Place::Kind::Folder ? typedPath(Text1.Text) : text::trim(Text1.Text)};
    if (place.where.empty() && kind_ == Place::Kind::Folder) return warn("Falta la carpeta.", Text1);
    try {
        const BusyPointer busy(desktop());
        place_ = reach_(place);
        names_ = place_.companies->list();
        if (names_.empty()) throw std::runtime_error("No hay ninguna empresa en " + nameOf(place) + ".");
    } catch (const std::exception& failure) {
        return warn(failure.what(), Text1);
    }
    for (const std::string& name : names_) cboEmpresa.AddItem(name);
    cboEmpresa.Enabled = cmdAbrir.Enabled = true;
    cboEmpresa.setListIndex(0);
    const std::size_t found = names_.size();
    tell(std::string(kind_ == Place::Kind::Server ? "Se ha conectado. " : "") + "Hay " +
         (found == 1 ? "una empresa." : std::to_string(found) + " empresas."));
    setFocus(cmdAbrir);
}

void frmAbrir::abrir() {
    chosen_ = names_.at(static_cast<std::size_t>(cboEmpresa.ListIndex()));
    unload();
}

}  // namespace FendaMaestros
