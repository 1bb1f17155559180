#pragma once

#include "ui/Screen.h"

namespace FendaMaestros {

/// Shows the withholding keys of a fiscal year and the sub-keys of the one chosen.
class frmClaves final : public Screen {
public:
    frmClaves();

protected:
    void onLoad() override;

private:
    void mostrarClaves();
    void mostrarSubclaves();
    std::int16_t ejercicio() const;

    Label Label1{"Ejercicio"};
    TextBox Text1;
    Label Label2{"Clave"};
    ComboBox cboClave;
    Label Label3{"Subclave"};
    ComboBox cboSubclave;
    Label lblAyuda{"Hay claves de los ejercicios 2008 a 2012; alt y flecha abajo abren la lista."};
    CommandButton cmdSalir{"&Salir"};
};

}  // namespace FendaMaestros
