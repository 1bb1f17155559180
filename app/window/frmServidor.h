#pragma once

#include <optional>

#include "app/window/CompanyPlace.h"
#include "app/window/DirectWindow.h"

namespace FendaMaestros {

/// Asks for the connection to a server, tries it and offers the companies found there.
class frmServidor final : public DirectWindow {
public:
    explicit frmServidor(ServerConnector connect);

    /// The company that the person has chosen to open; "" when none.
    const std::string& company() const { return chosen_; }
    /// Where it is.
    const CompanyPlace& place() const { return place_; }

private:
    void conectar();
    void abrir();

    ServerConnector connect_;
    CompanyPlace place_;
    std::string chosen_;
    Label Label1{"Conexión"};
    TextBox Text1;
    Label Label2{"Empresa"};
    ComboBox cboEmpresa;
    Label lblAyuda{
        "Por ejemplo, host=servidor dbname=contabilidad, o service=conta.\nLa contraseña se toma de donde la guarda su "
        "usuario:\nel fichero .pgpass, PGPASSWORD o el servicio."};
    CommandButton cmdProbar{"&Probar la conexión"};
    CommandButton cmdAbrir{"&Abrir"};
    CommandButton cmdSalir{"&Salir"};
};

}  // namespace FendaMaestros
