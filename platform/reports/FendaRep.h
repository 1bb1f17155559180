#pragma once

#include "toolkit/Desktop.h"
#include "ui/ExternalComponents.h"

namespace FendaMaestros {

/// Prints the chart of accounts in a modal preview: by account ("PlanCuentas1"), department ("PlanCuentasDpto") or work
/// centre ("PlanCuentasCentro"), each with balances when svariables is 1, and with tax identities ("PlanCuentasNif").
class FendaRep final : public ReportPrinter {
public:
    /// `desktop` must outlive the component.
    explicit FendaRep(Desktop& desktop) : desktop_(desktop) {}

    /// Besides what ReportPrinter says: std::logic_error when MyBd has not been set, and std::runtime_error when the
    /// rows lack a column of the layout.
    void jshowInforme(const std::string& sInforme, const std::string& sSQL) override;

private:
    Desktop& desktop_;
};

/// Makes the component available under its ProgID. `desktop` must outlive the registry.
void registerFendaRep(ComponentRegistry& components, Desktop& desktop);

}  // namespace FendaMaestros
