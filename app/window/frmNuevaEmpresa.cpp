#include "app/window/frmNuevaEmpresa.h"

#include <algorithm>

#include "toolkit/Text.h"

namespace FendaMaestros {

frmNuevaEmpresa::frmNuevaEmpresa(Desktop& desktop, CompanyPlace place)
    : PantallaEmpresa(desktop), place_(std::move(place)) {
    Caption = sTituloVentana = "Nueva empresa";
    if (place_.companies->exists()) taken_ = place_.companies->list();
    lblLugar.Caption = "Se creará en " + nameOf(place_.place) + ".";
    colocar(lblLugar, {&cmdCrear, &cmdSalir});
    add(cmdCrear, "cmdCrear");
    add(cmdSalir, "cmdSalir");
    cmdCrear.Click = [this] { crear(); };
    cmdSalir.Click = [this] { unload(); };
    mostrar({.name = {}, .fiscalYear = desktop.today().year});
}

void frmNuevaEmpresa::crear() {
    const auto company = leer();
    if (!company) return;
    try {
        const BusyGuard busy(*this);
        tell("Se está creando la empresa...");
        desktop().processPending();
        place_.companies->create(*company);
    } catch (const std::exception& failure) {
        tell({});
        return warn(failure.what(), txtNombre);
    }
    created_ = company->name;
    unload();
}

std::string frmNuevaEmpresa::objecionAlNombre(const std::string& name) const {
    const auto same = [&name](const std::string& other) { return text::upper(other) == text::upper(name); };
    return std::ranges::any_of(taken_, same) ? "Ya hay una empresa con ese nombre." : "";
}

}  // namespace FendaMaestros
