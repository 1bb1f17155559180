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
    std::string_view sentence;
    /// The server's own words go behind it.
    bool saysMore = false;
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
    {"23505", Kind::Constraint, "Ya existe un registro con ese mismo valor.", true},
    {"23", Kind::Constraint, "La base de datos no admite el valor indicado.", true},
    {"22", Kind::Constraint, "El valor indicado no corresponde al tipo del campo.", true},
    {"54", Kind::Constraint, "El valor indicado es demasiado grande."},
    {"42", Kind::Sql, "La base de datos no entiende la sentencia.", true},
    {"57014", Kind::Other, "El servidor ha tardado demasiado y la operación se ha parado."},
    {"57P", Kind::Lost, serverGone},
    {"08", Kind::Lost, serverGone},
    {"25P03", Kind::Lost, serverGone},
    {"XX001", Kind::NotADatabase, "La base de datos está dañada."},
    {"XX002", Kind::NotADatabase, "La base de datos está dañada."},
    {"", Kind::Other, "La base de datos ha dado un error.", true},
};

const Meaning& meaning(std::string_view state) {
    const Meaning* found = meanings;
    while (!state.starts_with(found->state)) ++found;
    return *found;
}

std::string sentence(const Meaning& meaning, const std::string& words) {
    if (!meaning.saysMore || words.empty()) return std::string(meaning.sentence);
    return std::string(meaning.sentence.substr(0, meaning.sentence.size() - 1)) + ": " + words;
}

std::string field(const PGresult* result, int code) {
    const char* text = PQresultErrorField(result, code);
    return text ? text : "";
}

}  // namespace

ServerError::ServerError(const PGresult* result)
    : ServerError(field(result, PG_DIAG_SQLSTATE), field(result, PG_DIAG_MESSAGE_PRIMARY),
                  PQresultErrorMessage(result)) {}

ServerError::ServerError(const std::string& state, const std::string& words, const std::string& text)
    : ErrorBd(meaning(state).kind, sentence(meaning(state), words), 0, state + " " + text), state_(state) {}

ErrorBd lost(const std::string& text) { return {Kind::Lost, serverGone, 0, text}; }

}  // namespace FendaMaestros::postgres
