#pragma once

#include <cstdint>
#include <vector>

#include "chartreports/VerificacionPlan.h"
#include "ui/Screen.h"

namespace FendaMaestros {

/// Checks the chart of accounts: sub-accounts that hang from no account of the official plan, or whose code is repeated
/// or of another length; of the latter it deletes, when asked, those that no journal line is posted to.
class frmPlanVerificar final : public Screen {
public:
    frmPlanVerificar();

private:
    void onLoad() override;
    void onKeyUp(int& code, int shift) override;
    void disponer();

    void iniciar();
    void prepararLista(std::vector<TableColumn> columns);
    void verificarSubcuentas();
    void listarSubcuenta(const SubcuentaErronea& account);
    void cerrarVerificacion(const std::vector<SubcuentaErronea>& found);
    void verificarPlan();
    /// Tells how many rows the list has; `stopped`: it holds what was found until then.
    void contar(const char* one, const char* many, bool stopped);
    void abrirCuenta();

    Label Label1{"Plan"};
    ComboBox cboPlan;
    ComboBox cboPGC;
    ListView ListView1;
    ProgressBar barProgreso;
    CommandButton cmdInicio{"&Iniciar verificación "};
    CommandButton cmdSalir{"Salir"};

    /// `PCta_Id` of each row of the list.
    std::vector<std::int64_t> nIds;
};

}  // namespace FendaMaestros
