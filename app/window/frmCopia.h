#pragma once

#include <functional>
#include <string>

#include "app/window/DirectWindow.h"

namespace FendaMaestros {

/// Asks where to, and copies all companies of the place into a new folder there.
class frmCopia final : public DirectWindow {
public:
    /// Makes the copy and gives what is said of it. Throws std::exception, in Spanish.
    using Copy = std::function<std::string(const std::string& destination)>;

    /// `folder` is the one proposed to put the copy in.
    frmCopia(std::string folder, Copy copy);

    /// Where the last copy has been put; "" when none was made.
    const std::string& folder() const { return folder_; }

private:
    void examinar();
    void copiar();

    Copy copy_;
    std::string name_;
    std::string folder_;
    Label lblAyuda{
        "Copia todas las empresas con los datos comunes, como están en un momento. Mientras se hace se puede seguir "
        "trabajando. La copia se revisa al terminar."};
    Label Label1{"Dejarla en"};
    TextBox Text1;
    Label Label2{"Nombre"};
    TextBox Text2;
    CommandButton cmdCopiar{"&Hacer la copia"};
    CommandButton cmdExaminar{"E&xaminar..."};
    CommandButton cmdSalir{"&Salir"};
};

}  // namespace FendaMaestros
