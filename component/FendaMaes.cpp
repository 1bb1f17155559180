#include "component/FendaMaes.h"

#include <stdexcept>

#include "codetables/frmCentros.h"
#include "codetables/frmConceptos.h"
#include "codetables/frmDepartamentos.h"
#include "codetables/frmMasas.h"
#include "codetables/frmPaises.h"
#include "taxid/Validacion.h"
#include "taxid/VerificarCif.h"

namespace FendaMaestros {

FendaMaes* InstanciaActual = nullptr;

FendaMaes& instanciaActual() {
    if (!InstanciaActual) throw std::logic_error("No hay ningún objeto FendaMaes en uso.");
    return *InstanciaActual;
}

FendaMaes::FendaMaes(Desktop& desktop, RegistroComponentes& components) : desktop_(desktop), components_(components) {
    InstanciaActual = this;
}

FendaMaes::~FendaMaes() {
    if (InstanciaActual == this) InstanciaActual = nullptr;
}

SesionBd& FendaMaes::sesion() const {
    if (!MyBd) throw std::logic_error("No se ha indicado la sesión de base de datos (MyBd).");
    return *MyBd;
}

void FendaMaes::jPaises() { frmPaises().show(); }

void FendaMaes::jConceptos() { frmConceptos().show(); }

void FendaMaes::jDepartamentos() { frmDepartamentos().show(); }

void FendaMaes::jCentros() { frmCentros().show(); }

void FendaMaes::jMasas() { frmMasas().show(); }

std::string FendaMaes::Calcula_letra_NIF(const std::string& valor, std::string* mensaje) {
    return letraNif(valor, mensaje);
}

bool FendaMaes::FnVerificarCif(std::string& sValor, bool bDatos) {
    return FendaMaestros::FnVerificarCif(sValor, bDatos);
}

}  // namespace FendaMaestros
