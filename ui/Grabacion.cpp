#include "ui/Grabacion.h"

#include "session/ErrorBd.h"

namespace FendaMaestros {

namespace {

void requireCarriedOut(bool status, const std::string& reason) {
    if (!status) throw ErrorBd(ErrorBd::Kind::Refused, "No se ha podido grabar: " + reason);
}

}  // namespace

void Grabacion::actualizar(std::string_view where) {
    session_.Condicion(where);
    std::string text;
    bool status = false;
    session_.Actualizar(text, status);
    requireCarriedOut(status, text);
}

void Grabacion::insertar() {
    session_.Condicion("");
    std::string text;
    bool status = false;
    session_.Insertar(text, status);
    requireCarriedOut(status, text);
}

void Grabacion::borrar(std::string_view where) {
    session_.Condicion(where);
    std::string text;
    bool status = false;
    session_.Borrar(text, status);
    requireCarriedOut(status, text);
}

}  // namespace FendaMaestros
