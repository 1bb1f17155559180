#pragma once

#include <string>
#include <vector>

#include "app/window/CompanyPlace.h"
#include "app/window/PantallaEmpresa.h"

namespace FendaMaestros {

/// Asks for the data of a company and creates it.
class frmNuevaEmpresa final : public PantallaEmpresa {
public:
    frmNuevaEmpresa(Desktop& desktop, CompanyPlace place);

    /// The company that has been created; "" when none.
    const std::string& company() const { return created_; }

private:
    void crear();
    std::string objecionAlNombre(const std::string& name) const override;
    std::string ayudaDelNombre() const override { return "Con él se abre, y encabeza los listados."; }

    CompanyPlace place_;
    std::vector<std::string> taken_;
    std::string created_;
    Label lblLugar;
    CommandButton cmdCrear{"&Crear la empresa"};
    CommandButton cmdSalir{"&Salir"};
};

}  // namespace FendaMaestros
