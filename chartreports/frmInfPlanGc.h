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
    /// A spreadsheet is the way out of this listing.
    void imprimir() override {}
    void disponer();

    ComboBox cboPlan;
    ComboBox cboPGC;
    ListPair cboMasas{"cboMasas"};
};

}  // namespace FendaMaestros
