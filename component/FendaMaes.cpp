#include "component/FendaMaes.h"

#include "chart/BuscarCuentas.h"
#include "chart/CodigosCuenta.h"
#include "chart/frmPlanCtas.h"
#include "chart/frmPlanGC.h"
#include "chartreports/frmInfPlanGc.h"
#include "chartreports/frmPlanVerificar.h"
#include "chartreports/frmPlandeCuentas.h"
#include "codetables/frmCentros.h"
#include "codetables/frmConceptos.h"
#include "codetables/frmDepartamentos.h"
#include "codetables/frmMasas.h"
#include "codetables/frmPaises.h"
#include "taxid/BuscaPoblacion.h"
#include "taxid/ClavesRetencion.h"
#include "taxid/Validacion.h"
#include "taxid/VerificarCif.h"
#include "taxid/frmNif.h"

namespace FendaMaestros {

void FendaMaes::jPaises() { frmPaises().show(); }

void FendaMaes::jConceptos() { frmConceptos().show(); }

void FendaMaes::jDepartamentos() { frmDepartamentos().show(); }

void FendaMaes::jCentros() { frmCentros().show(); }

void FendaMaes::jMasas() { frmMasas().show(); }

void FendaMaes::jPlanCuentas(std::int32_t nIdCuenta) { abrirSubcuentas(nIdCuenta); }

void FendaMaes::jshowInformePlandeCuentas() { frmPlandeCuentas().show(); }

void FendaMaes::jshowPGCMantenimiento() {
    frmPlanGC([] { frmInfPlanGc().show(); }).show();
}

void FendaMaes::jshowPGCVerificacion() { frmPlanVerificar().show(); }

std::string FendaMaes::CrearNuevaCuenta(std::string& sCta, std::int32_t nIdNif, bool bCalcula) {
    frmPlanCtas screen;
    screen.prepararCreacion(sCta, nIdNif, bCalcula);
    screen.show();
    return Cuenta;
}

bool FendaMaes::msValidaCuentaPlan(const std::string& sCuenta, std::int16_t nEjercicio, bool bPreguntar) {
    return FendaMaestros::msValidaCuentaPlan(sCuenta, nEjercicio, bPreguntar);
}

std::int32_t FendaMaes::fnBuscarCuentas(std::int16_t n, bool bPGC, bool bSoloActivas) {
    return FendaMaestros::fnBuscarCuentas(n, bPGC, bSoloActivas);
}

std::int32_t FendaMaes::fnBuscarConceptos(std::int16_t n) { return FendaMaestros::fnBuscarConceptos(n); }

void FendaMaes::jNif(const std::string& sNif) { frmNif(sNif).show(); }

void FendaMaes::jCargaClavesRetencion(ComboBox& oCb, const std::string& s, std::int16_t n, bool bConsulta) {
    FendaMaestros::jCargaClavesRetencion(oCb, s, n, bConsulta);
}

std::string FendaMaes::Calcula_letra_NIF(const std::string& valor, std::string* mensaje) {
    return letraNif(valor, mensaje);
}

std::string FendaMaes::FnBuscaPoblacion(const std::string& PAIS, const std::string& Cpostal) {
    return FendaMaestros::FnBuscaPoblacion(PAIS, Cpostal);
}

bool FendaMaes::FnVerificarCif(std::string& sValor, bool bDatos) {
    return FendaMaestros::FnVerificarCif(sValor, bDatos);
}

}  // namespace FendaMaestros
