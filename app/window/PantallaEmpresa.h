#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/window/DirectWindow.h"
#include "session/Companies.h"

namespace FendaMaestros {

/// The data of a company, each field with what it means or, as one types, what is wrong with it.
class PantallaEmpresa : public DirectWindow {
protected:
    explicit PantallaEmpresa(Desktop& desktop);

    bool answersFromFields() const override { return false; }

    /// Fields and commands are registered and laid out; `above` and what is said below stand around them.
    void colocar(Label& above, std::vector<Control*> commands);
    void mostrar(const NewCompany& company);
    /// What has been typed. Warns, with the focus on the field at fault, and gives nothing when it makes no sense.
    std::optional<NewCompany> leer();
    /// Why a name cannot be taken besides what is true of any; "" when it can.
    virtual std::string objecionAlNombre(const std::string& /*name*/) const { return {}; }
    /// What the name is for.
    virtual std::string ayudaDelNombre() const = 0;

    TextBox txtNombre, txtEjercicio, txtDigitos;

private:
    /// A field, and what stands below it.
    struct Campo {
        TextBox& box;
        Label& says;
        std::string TypedCompany::*value;
        std::string (PantallaEmpresa::*explain)() const;
    };

    std::vector<Campo> campos();
    void explicar(const Campo& campo);
    std::string explicarNombre() const { return ayudaDelNombre(); }
    std::string explicarEjercicio() const;
    std::string explicarDigitos() const;
    /// "" when the field alone makes sense.
    std::string objecion(const Campo& campo) const;

    std::vector<std::string> provinceCodes_;
    Label Label1{"Nombre"}, Label2{"Ejercicio"}, Label3{"Dígitos"}, Label4{"Provincia"}, Label5{"Orden del nombre"};
    Label lblNombre, lblEjercicio, lblDigitos, lblProvincia, lblOrden;
    ComboBox cboProvincia, cboOrden;
};

}  // namespace FendaMaestros
