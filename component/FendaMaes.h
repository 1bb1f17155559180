#pragma once

#include <cstdint>
#include <string>

#include "toolkit/Controls.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

/// The one public class: the host creates it, hands it the open session and calls its entry operations. A screen
/// operation shows its screen modally and returns when the person has closed it. Errors of the database, and those of a
/// screen that does not handle them itself, reach the caller as exceptions derived from std::exception.
class FendaMaes final : public WorkContext {
public:
    /// Both must outlive the object. The newest object that lives is the one that every screen works with.
    FendaMaes(Desktop& desktop, ComponentRegistry& components) : WorkContext(desktop, components) {}

    void jPaises();
    void jConceptos();
    void jDepartamentos();
    void jCentros();
    void jMasas();
    /// The sub-accounts, on the account with this PCta_Id if it is not 0.
    void jPlanCuentas(std::int32_t nIdCuenta = 0);
    /// Lets a person create a sub-account: with the code `sCta` or, with `bCalcula`, the next free one that begins with
    /// it, which is also written into `sCta`; linked to the tax identity `nIdNif` if that is not 0. Gives `Cuenta`: the
    /// code saved, or the one that turned out to exist; left without either, it keeps the value it had.
    std::string CrearNuevaCuenta(std::string& sCta, std::int32_t nIdNif = 0, bool bCalcula = false);

    /// The chart of accounts as a listing.
    void jshowInformePlandeCuentas();
    /// The accounts of the official plan.
    void jshowPGCMantenimiento();
    /// The checks of the chart of accounts.
    void jshowPGCVerificacion();

    /// Whether a code hangs from an account of the official plan of the year, or a person wants it all the same. See
    /// chart/CodigosCuenta.h.
    bool msValidaCuentaPlan(const std::string& sCuenta, std::int16_t nEjercicio, bool bPreguntar = true);
    /// The PCta_Id that a person picks, 0 for none. `n`: 1 by code, otherwise by name. See chart/BuscarCuentas.h.
    std::int32_t fnBuscarCuentas(std::int16_t n, bool bPGC = false, bool bSoloActivas = true);
    /// The Conce_Id that a person picks, 0 for none. `n`: 1 by code, otherwise by name.
    std::int32_t fnBuscarConceptos(std::int16_t n);

    /// The register of tax identities. With a document that is not blank it opens on its entry, or on a new one with
    /// that document, and closes after the first save.
    void jNif(const std::string& sNif = {});

    /// Fills a combo box with the withholding keys ("-") or the sub-keys of one key. See taxid/ClavesRetencion.h.
    void jCargaClavesRetencion(ComboBox& oCb, const std::string& s, std::int16_t n, bool bConsulta);
    /// The check letter of a personal tax number (NIF). "" when there is none to compute: then `mensaje`, if given,
    /// receives the reason. See taxid/Validacion.h.
    std::string Calcula_letra_NIF(const std::string& valor, std::string* mensaje = nullptr);
    /// The town registered for a country and a postal code, "" when none is.
    std::string FnBuscaPoblacion(const std::string& PAIS, const std::string& Cpostal);
    /// Whether a tax identifier is well formed; rewrites it in its normal form. With `bDatos`, one that is registered
    /// as N.I.E. is accepted as it is. See taxid/Validacion.h.
    bool FnVerificarCif(std::string& sValor, bool bDatos = false);
};

}  // namespace FendaMaestros
