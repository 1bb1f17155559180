#include "platform/postgres/Failure.h"

#include <libpq-fe.h>

#include <string_view>

namespace FendaMaestros::postgres {

namespace {

using Kind = ErrorBd::Kind;

/// The first entry whose characters begin an SQLSTATE tells what it means.
struct Meaning {
    std::string_view state;
    Kind kind;
    const char* sentence;
};

constexpr const char* serverGone =
    "Se ha perdido la conexión con el servidor y no se ha guardado nada. Inténtelo de nuevo.";

constexpr Meaning meanings[] = {
    {"40", Kind::Busy, "Otro puesto acaba de cambiar los mismos datos. Inténtelo de nuevo en unos segundos."},
    {"55P03", Kind::Busy, "Otro puesto está usando los datos en este momento. Inténtelo de nuevo en unos segundos."},
    {"53300", Kind::Busy, "El servidor no admite más puestos a la vez. Inténtelo de nuevo en unos minutos."},
    {"25006", Kind::ReadOnly, "No se puede escribir en los datos: son de solo lectura."},
    {"42501", Kind::ReadOnly, "El usuario no tiene permiso para hacerlo en el servidor."},
    {"53100", Kind::Full, "No queda espacio en el servidor. No se ha guardado nada."},
    {"23505", Kind::Constraint, "Ya existe un registro con ese mismo valor."},
    {"23", Kind::Constraint, "La base de datos no admite el valor indicado."},
    {"22", Kind::Constraint, "El valor indicado no corresponde al tipo del campo."},
    {"54", Kind::Constraint, "El valor indicado es demasiado grande."},
    {"42", Kind::Sql, "La base de datos no entiende la sentencia."},
    {"57014", Kind::Other, "El servidor ha tardado demasiado y la operación se ha parado."},
    {"57P", Kind::Lost, serverGone},
    {"08", Kind::Lost, serverGone},
    {"25P03", Kind::Lost, serverGone},
    {"XX001", Kind::NotADatabase, "La base de datos está dañada."},
    {"XX002", Kind::NotADatabase, "La base de datos está dañada."},
    {"", Kind::Other, "La base de datos ha dado un error."},
};

const Meaning& meaning(std::string_view state) {
    const Meaning* found = meanings;
    while (!state.starts_with(found->state)) ++found;
    return *found;
}

std::string textOf(const char* text) { return text ? text : ""; }

}  // namespace

ServerError::ServerError(std::string state, const std::string& text)
    : ErrorBd(meaning(state).kind, meaning(state).sentence, 0, state + " " + text), state_(std::move(state)) {}

void check(const PGresult* result) {
    switch (PQresultStatus(result)) {
        case PGRES_COMMAND_OK:
        case PGRES_TUPLES_OK:
        case PGRES_SINGLE_TUPLE:
            return;
        default:
            throw ServerError(textOf(PQresultErrorField(result, PG_DIAG_SQLSTATE)), PQresultErrorMessage(result));
    }
}

ErrorBd lost(const std::string& text) { return {Kind::Lost, serverGone, 0, text}; }

}  // namespace FendaMaestros::postgres
