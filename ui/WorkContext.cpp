#include "ui/WorkContext.h"

#include <stdexcept>

namespace FendaMaestros {

WorkContext* InstanciaActual = nullptr;

WorkContext& instanciaActual() {
    if (!InstanciaActual) throw std::logic_error("No hay ningún objeto FendaMaes en uso.");
    return *InstanciaActual;
}

WorkContext::WorkContext(Desktop& desktop, ComponentRegistry& components) : desktop_(desktop), components_(components) {
    InstanciaActual = this;
}

WorkContext::~WorkContext() {
    if (InstanciaActual == this) InstanciaActual = nullptr;
}

SesionBd& WorkContext::sesion() const {
    if (!MyBd) throw std::logic_error("No se ha indicado la sesión de base de datos (MyBd).");
    return *MyBd;
}

SesionBd& WorkContext::sesionOrigen() const {
    if (!MyBdorigen) throw std::logic_error("No se ha indicado la segunda sesión de base de datos (MyBdorigen).");
    return *MyBdorigen;
}

}  // namespace FendaMaestros
