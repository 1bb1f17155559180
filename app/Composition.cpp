#include "app/Composition.h"

#include "app/BuscadorCuentas.h"

#ifdef FENDA_WITH_REPORTS
#include "platform/reports/FendaRep.h"
#endif
#ifdef FENDA_WITH_XLSX
#include "platform/xlsx/KOffice.h"
#endif

namespace FendaMaestros {

void registerComponents(ComponentRegistry& components, Desktop& desktop) {
    components.add(HostApplication::ProgId, [&desktop] { return std::make_unique<BuscadorCuentas>(desktop); });
#ifdef FENDA_WITH_REPORTS
    registerFendaRep(components, desktop);
#endif
#ifdef FENDA_WITH_XLSX
    registerKOffice(components, desktop);
#endif
}

OpenCompany::OpenCompany(Desktop& desktop, std::unique_ptr<SesionBd> session)
    : session_(std::move(session)), component_(desktop, components_) {
    registerComponents(components_, desktop);
    component_.MyBd = session_.get();
    component_.MyBdorigen = session_.get();
}

}  // namespace FendaMaestros
