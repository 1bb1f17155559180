#pragma once

#include <string>
#include <vector>

#include "app/window/CompanyPlace.h"
#include "app/window/DirectWindow.h"

namespace FendaMaestros {

/// Asks for a place of companies, a folder or the connection to a server, tries it and offers the companies found
/// there.
class frmAbrir final : public DirectWindow {
public:
    frmAbrir(Desktop& desktop, Place::Kind kind, PlaceOpener reach);

    /// The company that the person has chosen to open; "" when none.
    const std::string& company() const { return chosen_; }
    /// Where it is.
    const CompanyPlace& place() const { return place_; }

private:
    void examinar();
    void probar();
    void abrir();
    /// What was found belongs to the place that was tried.
    void olvidar();

    Place::Kind kind_;
    PlaceOpener reach_;
    CompanyPlace place_;
    std::vector<std::string> names_;
    std::string chosen_;
    Label Label1;
    TextBox Text1;
    CommandButton cmdExaminar{"E&xaminar..."};
    Label Label2{"Empresa"};
    ComboBox cboEmpresa;
    Label lblAyuda;
    CommandButton cmdProbar;
    CommandButton cmdAbrir{"&Abrir"};
    CommandButton cmdSalir{"&Salir"};
};

}  // namespace FendaMaestros
