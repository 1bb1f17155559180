#pragma once

#include <string>

#include "app/window/PantallaEmpresa.h"
#include "session/SesionBd.h"

namespace FendaMaestros {

/// Shows the parameters of the company that is open and changes them. Before the fiscal year or the digits of
/// sub-accounts change, the person is told what that entails.
class frmDatosEmpresa final : public PantallaEmpresa {
public:
    /// `session` must outlive the window. `company` is the name that it is opened by, which stays.
    frmDatosEmpresa(Desktop& desktop, SesionBd& session, const std::string& company, const std::string& where);

    /// Parameters have been stored; the session still has the old ones.
    bool changed() const { return changed_; }

private:
    void guardar();
    std::string consecuencias(const NewCompany& company) const;
    std::string ayudaDelNombre() const override { return "El que encabeza los listados."; }

    SesionBd& session_;
    NewCompany before_;
    bool changed_ = false;
    Label lblLugar;
    CommandButton cmdGuardar{"&Guardar"};
    CommandButton cmdSalir{"&Salir"};
};

}  // namespace FendaMaestros
