#pragma once

#include <optional>
#include <string>

#include "app/window/DirectWindow.h"
#include "renumbering/Renumbering.h"

namespace FendaMaestros {

/// Renumbers or merges sub-accounts of the company that is open: shows first what becomes of each code and what forbids
/// it, and writes it when the person wants.
class frmRenumerar final : public DirectWindow {
public:
    frmRenumerar();

    /// The digits of the company have been changed; its session still has the old ones.
    bool changedDigits() const { return changedDigits_; }

private:
    /// In the order of cboQue.
    enum Clase { Cuenta, Digitos, Fundir };

    bool answersFromFields() const override { return false; }
    void onLoad() override;
    void onKeyUp(int& code, int shift) override;

    Clase clase() const { return static_cast<Clase>(cboQue.ListIndex()); }
    void colocar();
    void elegirClase();
    void dejarCodigo(int field);
    void buscar(std::int16_t mode);
    /// Nothing, behind a warning, when a number is missing.
    std::optional<RenumberingRequest> peticion();
    void ver();
    void mostrar();
    /// What is shown holds no longer.
    void olvidar();
    void aplicar();
    void terminar();
    RenumberingProgress progreso();
    void guardarInforme();

    /// Fields with a code, of which each has another one behind it that says what the code stands for, and the digits.
    static constexpr int Subcuenta = 0, CodigoNuevo = 2, Queda = 4, Longitud = 6;

    std::optional<RenumberingPlan> plan_;
    RenumberingRequest request_;
    bool applied_ = false;
    bool changedDigits_ = false;

    Label lblQue{"Qué se cambia"}, lblIdentidad{"Queda la identidad"};
    ControlArray<Label> Label1{"Label1", {Subcuenta, CodigoNuevo, Queda, Longitud}};
    ComboBox cboQue, cboIdentidad;
    ControlArray<TextBox> Text1{"Text1",
                                {Subcuenta, Subcuenta + 1, CodigoNuevo, CodigoNuevo + 1, Queda, Queda + 1, Longitud}};
    CheckBox chkFuera;
    Label lblResumen;
    DataGrid dbg;
    ProgressBar barProgreso;
    CommandButton cmdVer{"&Vista previa"};
    CommandButton cmdAplicar{"&Aplicar"};
    CommandButton cmdInforme{"&Informe..."};
    CommandButton cmdSalir{"&Salir"};
};

}  // namespace FendaMaestros
