#include "ui/WorkContext.h"

#include <stdexcept>
#include <vector>

namespace FendaMaestros {

WorkContext* InstanciaActual = nullptr;

namespace {

/// The objects that live, oldest first.
std::vector<WorkContext*>& living() {
    static std::vector<WorkContext*> objects;
    return objects;
}

}  // namespace

WorkContext& instanciaActual() {
    if (!InstanciaActual) throw std::logic_error("No hay ningún objeto FendaMaes en uso.");
    return *InstanciaActual;
}

WorkContext::WorkContext(Desktop& desktop, ComponentRegistry& components) : desktop_(desktop), components_(components) {
    living().push_back(this);
    InstanciaActual = this;
}

WorkContext::~WorkContext() {
    std::erase(living(), this);
    if (InstanciaActual == this) InstanciaActual = living().empty() ? nullptr : living().back();
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
