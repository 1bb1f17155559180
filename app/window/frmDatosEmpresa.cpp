#include "app/window/frmDatosEmpresa.h"

#include "storage/Parameters.h"

namespace FendaMaestros {

namespace {

std::string subaccountsThere(SesionBd& session) {
    const auto rows = session.Conexion()->Execute("SELECT COUNT(*) FROM PCta WHERE PCta_Subcuenta = 1");
    const std::string count = rows->cell(0, 0).text();
    return count == "1" ? "La subcuenta que hay conserva" : "Las " + count + " subcuentas que hay conservan";
}

}  // namespace

frmDatosEmpresa::frmDatosEmpresa(Desktop& desktop, SesionBd& session, const std::string& company,
                                 const std::string& where)
    : PantallaEmpresa(desktop), session_(session), before_(storage::companyOf(session.Parametros())) {
    Caption = sTituloVentana = "Datos de la empresa";
    lblLugar.Caption = "Se abre como «" + company + "», en " + where + ".";
    colocar(lblLugar, {&cmdGuardar, &cmdSalir});
    add(cmdGuardar, "cmdGuardar");
    add(cmdSalir, "cmdSalir");
    cmdGuardar.Click = [this] { guardar(); };
    cmdSalir.Click = [this] { unload(); };
    mostrar(before_);
}

void frmDatosEmpresa::guardar() {
    const auto company = leer();
    if (!company) return;
    if (*company == before_) return tell("No hay nada que guardar.");
    const std::string entailed = consecuencias(*company);
    if (!entailed.empty() && !confirmInPlace(entailed + "\n\n¿Quiere cambiarlo?", message::Exclamation, sTituloVentana))
        return;
    try {
        saveWithPatience([&] { storage::changeParameters(*session_.Conexion(), *company); });
    } catch (const std::exception& failure) {
        return warn(std::string("No se ha guardado nada. ") + failure.what(), txtNombre);
    }
    changed_ = true;
    unload();
}

std::string frmDatosEmpresa::consecuencias(const NewCompany& company) const {
    std::string entailed;
    const auto say = [&entailed](const std::string& sentence) {
        entailed += (entailed.empty() ? "" : "\n\n") + sentence;
    };
    if (company.fiscalYear != before_.fiscalYear) {
        const auto planOf = [](int year) { return std::to_string(planEnVigor(static_cast<std::int16_t>(year))); };
        say("El ejercicio pasa de " + std::to_string(before_.fiscalYear) + " a " + std::to_string(company.fiscalYear) +
            ". Las claves de retención y los informes serán los de ese año. Los apuntes no cambian.");
        if (planOf(company.fiscalYear) != planOf(before_.fiscalYear))
            say("Pasa a regir el plan contable de " + planOf(company.fiscalYear) +
                ". Las cuentas que hay no cambian; «Verificación del plan» dice cuáles no encajan en él.");
    }
    if (company.accountDigits != before_.accountDigits)
        say("Las subcuentas pasan de " + std::to_string(before_.accountDigits) + " a " +
            std::to_string(company.accountDigits) + " dígitos. " + subaccountsThere(session_) +
            " su código, y «Verificación del plan» las dará por erróneas. Solo las nuevas tendrán otra longitud. Con "
            "«Renumerar cuentas» cambian también las que hay.");
    if (!entailed.empty()) say("En los demás puestos se verá cuando vuelvan a abrir la empresa.");
    return entailed;
}

}  // namespace FendaMaestros
