#pragma once

#include "app/window/DirectWindow.h"

namespace FendaMaestros {

/// The first start, where there is no company yet: how to begin.
class frmInicio final : public DirectWindow {
public:
    enum class Choice { Leave, Create, Demonstration, OpenFolder, OpenServer };

    explicit frmInicio(Desktop& desktop);

    Choice choice() const { return choice_; }

private:
    void elegir(Choice choice);

    Choice choice_ = Choice::Leave;
    Frame Frame1, Frame2;
    Label lblCrear{
        "Se le preguntan el nombre, el ejercicio y poco más.\nEmpieza sin datos, con los planes de cuentas oficiales."};
    Label lblDemostracion{
        "Una empresa inventada, con cuentas, clientes y apuntes,\npara probarlo todo sin estropear nada."};
    CommandButton cmdCrear{"&Crear mi empresa"};
    CommandButton cmdDemostracion{"&Ver la demostración"};
    CommandButton cmdAbrir{"&Abrir una que ya existe..."};
    CommandButton cmdServidor{"Abrir en un se&rvidor..."};
    CommandButton cmdSalir{"&Salir"};
};

}  // namespace FendaMaestros
