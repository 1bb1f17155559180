#pragma once

#include "chartreports/PantallaInforme.h"

namespace FendaMaestros {

/// The accounts of the official plan as a listing, with the balance mass of each: by range, mass and name.
class frmInfPlanGc final : public PantallaInforme {
public:
    frmInfPlanGc();

private:
    void CargarCombos() override;
    std::int16_t columnaPorDefecto() const override { return static_cast<std::int16_t>(cboTipo.ListIndex() + 1); }
    Consulta consulta(std::int16_t nColumna, bool bAsc) override;
    /// Prints nothing: a spreadsheet is the way out of this listing.
    void imprimir() override { tell("Este listado no se imprime: expórtelo a Excel"); }
    void disponer();

    ComboBox cboPlan;
    ComboBox cboPGC;
    ListPair cboMasas{"cboMasas"};
};

}  // namespace FendaMaestros
