#include "platform/reports/FendaRep.h"

#include "platform/reports/PlanCuentas.h"

namespace FendaMaestros {

void FendaRep::jshowInforme(const std::string& sInforme, const std::string& sSQL) {
    const ReportDesign* design = findDesign(sInforme);
    if (!design) throw std::invalid_argument("No hay ningún informe llamado \"" + sInforme + "\".");
    if (!MyBd) throw std::logic_error("El informe " + sInforme + " no tiene una sesión de la que leer.");

    const ReportHeading heading{MyBd->Parametros().Item("Par_Nombre").Value.text(), sAcotacion1};
    PlanCuentas report(*design, heading, svariables == 1, MyBd->Conexion()->Execute(sSQL));
    report.Show(desktop_);
}

void registerFendaRep(ComponentRegistry& components, Desktop& desktop) {
    components.add(ReportPrinter::ProgId, [&desktop] { return std::make_unique<FendaRep>(desktop); });
}

}  // namespace FendaMaestros
