#pragma once

#include <string>
#include <string_view>

#include "session/SesionBd.h"

namespace FendaMaestros {

/// One write, described and carried out in the order that the session wants: table, columns, then actualizar(),
/// insertar() or, without columns, borrar().
class Grabacion {
public:
    Grabacion(SesionBd& session, std::string_view table) : session_(session) {
        session_.Tabla(table);
        session_.Reiniciar(0);
    }

    Grabacion& campo(std::string_view column, long kind, const Variant& value) {
        session_.Campos().Agregar(column, kind, value, 2);
        return *this;
    }

    /// `where` in full with its leading blank. Throws ErrorBd, also (kind Refused) when the session refuses the
    /// statement.
    void actualizar(std::string_view where);
    /// Errors as actualizar().
    void insertar();
    /// Arguments and errors as actualizar().
    void borrar(std::string_view where);

private:
    SesionBd& session_;
};

}  // namespace FendaMaestros
