#include "app/window/frmRevisar.h"

#include "app/Examination.h"

namespace FendaMaestros {

frmRevisar::frmRevisar(CompanyPlace place, std::string company)
    : place_(std::move(place)), company_(std::move(company)) {
    Caption = sTituloVentana = "Revisar";
    lstHallazgos.Columns = {{.Caption = "Dónde", .Width = 3000}, {.Caption = "Qué se ha encontrado", .Width = 9000}};
    add(lblAyuda, "lblAyuda");
    add(cmdRevisar, "cmdRevisar");
    add(cmdTodas, "cmdTodas");
    add(cmdSalir, "cmdSalir");
    add(lstHallazgos, "lstHallazgos");
    cmdRevisar.Click = [this] { revisar({company_}); };
    cmdTodas.Click = [this] { revisar(place_.companies->list()); };
    cmdSalir.Click = [this] { unload(); };
    layOut(arrange::column({arrange::plain(lblAyuda), arrange::filling(lstHallazgos),
                            arrange::buttons({&cmdRevisar, &cmdTodas, &cmdSalir})}));
}

/// What cannot be checked is listed too, and the next one follows.
void frmRevisar::revisar(const std::vector<std::string>& names) {
    lstHallazgos.Rows.clear();
    lstHallazgos.SelectedRow = -1;
    {
        const BusyGuard busy(*this);
        Examination examination(*place_.companies,
                                [this](const std::string& where, const std::string& fault) { anotar(where, fault); });
        examination.checkShared();
        for (const std::string& name : names) {
            tell("Se revisa " + name + "...");
            desktop().processPending();
            try {
                examination.check(name);
            } catch (const std::exception& error) {
                anotar(name, error.what());
            }
        }
    }
    const std::size_t found = lstHallazgos.Rows.size();
    const std::string checked = names.size() == 1 ? "Se ha revisado la empresa. " : "Se han revisado las empresas. ";
    tell(checked + (found == 0   ? "No se ha encontrado nada mal."
                    : found == 1 ? "Se ha encontrado una cosa."
                                 : "Se han encontrado " + std::to_string(found) + " cosas."),
         found == 0 ? StatusKind::Good : StatusKind::Warning);
}

void frmRevisar::anotar(const std::string& where, const std::string& fault) {
    lstHallazgos.Rows.push_back({.Texts = {where, fault}, .Tag = {}});
}

}  // namespace FendaMaestros
