#include "ui/RowWrite.h"

#include "session/Literal.h"

namespace FendaMaestros {

namespace {

void requireCarriedOut(bool status, const char* what, const std::string& reason) {
    if (!status) throw ErrorBd(ErrorBd::Kind::Refused, std::string("No se ha podido ") + what + ": " + reason);
}

}  // namespace

void requireUnique(ConexionBd& connection, const std::string& table, const std::string& column,
                   const std::string& value) {
    const auto same = connection.Execute("SELECT COUNT(*) FROM " + table + " WHERE " + column + " = " + literal(value));
    if (same->cell(0, 0).integer() > 1)
        throw ErrorBd(ErrorBd::Kind::Constraint, value + ": acaba de crearse desde otro puesto.");
}

void deleteRows(SesionBd& session, std::string_view table, std::string_view where) {
    session.Tabla(table);
    session.Condicion(where);
    std::string text;
    bool status = false;
    session.Borrar(text, status);
    requireCarriedOut(status, "borrar", text);
}

void RowWrite::erase(std::string_view where) {
    session_.Condicion(where);
    std::string text;
    bool status = false;
    session_.Borrar(text, status);
    requireCarriedOut(status, "borrar", text);
}

void RowWrite::update(std::string_view where) {
    session_.Condicion(where);
    std::string text;
    bool status = false;
    session_.Actualizar(text, status);
    requireCarriedOut(status, "grabar", text);
}

void RowWrite::insert() {
    session_.Condicion("");
    std::string text;
    bool status = false;
    session_.Insertar(text, status);
    requireCarriedOut(status, "grabar", text);
}

}  // namespace FendaMaestros
