#include "platform/sqlite/Check.h"

#include <sqlite3.h>

#include "session/ErrorBd.h"

namespace FendaMaestros::sqlite {

namespace {

struct Failure {
    int code;
    ErrorBd::Kind kind;
    const char* sentence;
};

using Kind = ErrorBd::Kind;

constexpr Failure failures[] = {
    {SQLITE_BUSY, Kind::Busy,
     "Otro programa está usando los datos en este momento. Inténtelo de nuevo en unos segundos."},
    {SQLITE_LOCKED, Kind::Busy, "Los datos están bloqueados en este momento. Inténtelo de nuevo en unos segundos."},
    {SQLITE_READONLY, Kind::ReadOnly, "No se puede escribir en los datos: son de solo lectura."},
    {SQLITE_PERM, Kind::ReadOnly, "No se puede escribir en los datos: falta el permiso."},
    {SQLITE_FULL, Kind::Full, "No queda espacio en el disco. No se ha guardado nada."},
    {SQLITE_CANTOPEN, Kind::NotADatabase, "No se puede abrir la base de datos."},
    {SQLITE_NOTADB, Kind::NotADatabase, "El fichero no es una base de datos."},
    {SQLITE_CORRUPT, Kind::NotADatabase, "La base de datos está dañada."},
    {SQLITE_CONSTRAINT, Kind::Constraint, "La base de datos no admite el valor indicado."},
    {SQLITE_MISMATCH, Kind::Constraint, "El valor indicado no corresponde al tipo del campo."},
    {SQLITE_TOOBIG, Kind::Constraint, "El valor indicado es demasiado grande."},
    {SQLITE_AUTH, Kind::Refused, "La sentencia no se ejecuta: la sesión no permite lo que pide."},
    {SQLITE_ERROR, Kind::Sql, "La base de datos no entiende la sentencia."},
    {SQLITE_IOERR, Kind::Other, "Ha fallado la lectura o la escritura en el disco."},
    {SQLITE_NOMEM, Kind::Other, "No queda memoria para la operación."},
};

constexpr Failure unknown = {0, Kind::Other, "La base de datos ha dado un error."};

const Failure& find(int code) {
    for (const auto& failure : failures)
        if (failure.code == (code & 0xff)) return failure;
    return unknown;
}

const char* sentence(int extended, const Failure& failure) {
    if (extended == SQLITE_CONSTRAINT_UNIQUE || extended == SQLITE_CONSTRAINT_PRIMARYKEY)
        return "Ya existe un registro con ese mismo valor.";
    if (extended == SQLITE_CONSTRAINT_DATATYPE) return "El valor indicado no corresponde al tipo del campo.";
    return failure.sentence;
}

}  // namespace

void check(int code, sqlite3* database) {
    if (code == SQLITE_OK || code == SQLITE_ROW || code == SQLITE_DONE) return;
    const bool current = database && (sqlite3_errcode(database) & 0xff) == (code & 0xff);
    const int extended = current ? sqlite3_extended_errcode(database) : code;
    const auto& failure = find(code);
    throw ErrorBd(failure.kind, sentence(extended, failure), extended,
                  current ? sqlite3_errmsg(database) : sqlite3_errstr(code));
}

}  // namespace FendaMaestros::sqlite
