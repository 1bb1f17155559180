#include "platform/sqlite/Check.h"

#include <sqlite3.h>

#include <string>
#include <string_view>

#include "platform/sqlite/FileAtFault.h"
#include "session/ErrorBd.h"
#include "toolkit/Text.h"

namespace FendaMaestros::sqlite {

namespace {

using Kind = ErrorBd::Kind;

constexpr std::string_view repeated = "Ya existe un registro con ese mismo valor.";
constexpr std::string_view wrongType = "El valor indicado no corresponde al tipo del campo.";
constexpr std::string_view undoneWithoutRight =
    "Hay una escritura a medias que se debe deshacer, y en la carpeta de datos no se puede escribir.";

struct Failure {
    int code;
    Kind kind;
    /// @ stands for the database at fault.
    std::string_view sentence;
    AtFault (*atFault)(sqlite3*) = nullptr;
    /// What the engine says, such as a column or the text of a trigger, goes behind the sentence.
    bool saysMore = false;
};

// What has an extended code stands before what it is a case of.
constexpr Failure failures[] = {
    {SQLITE_BUSY, Kind::Busy, "Otro programa está usando @ en este momento. Inténtelo de nuevo en unos segundos.",
     heldByOthers},
    {SQLITE_LOCKED, Kind::Busy, "Los datos están bloqueados en este momento. Inténtelo de nuevo en unos segundos."},
    {SQLITE_READONLY_ROLLBACK, Kind::ReadOnly, undoneWithoutRight},
    {SQLITE_IOERR_DELETE, Kind::ReadOnly, undoneWithoutRight},
    {SQLITE_READONLY, Kind::ReadOnly, "No se puede escribir en los datos: son de solo lectura."},
    {SQLITE_PERM, Kind::ReadOnly, "No se puede escribir en los datos: falta el permiso."},
    {SQLITE_FULL, Kind::Full, "No queda espacio en el disco. No se ha guardado nada."},
    {SQLITE_CANTOPEN, Kind::NotADatabase, "No se puede abrir la base de datos."},
    {SQLITE_NOTADB, Kind::NotADatabase, "El fichero no es una base de datos."},
    {SQLITE_CORRUPT, Kind::NotADatabase, "Están dañados @.", damaged},
    {SQLITE_CONSTRAINT_UNIQUE, Kind::Constraint, repeated, nullptr, true},
    {SQLITE_CONSTRAINT_PRIMARYKEY, Kind::Constraint, repeated, nullptr, true},
    {SQLITE_CONSTRAINT_DATATYPE, Kind::Constraint, wrongType, nullptr, true},
    {SQLITE_CONSTRAINT, Kind::Constraint, "La base de datos no admite el valor indicado.", nullptr, true},
    {SQLITE_MISMATCH, Kind::Constraint, wrongType, nullptr, true},
    {SQLITE_TOOBIG, Kind::Constraint, "El valor indicado es demasiado grande."},
    {SQLITE_AUTH, Kind::Refused, "La sentencia no se ejecuta: la sesión no permite lo que pide.", nullptr, true},
    {SQLITE_ERROR, Kind::Sql, "La base de datos no entiende la sentencia.", nullptr, true},
    {SQLITE_IOERR, Kind::Other, "Ha fallado la lectura o la escritura en el disco."},
    {SQLITE_INTERRUPT, Kind::Stopped, "Se ha detenido la operación."},
    {SQLITE_NOMEM, Kind::Other, "No queda memoria para la operación."},
};

constexpr Failure unknown = {0, Kind::Other, "La base de datos ha dado un error."};

const Failure& find(int extended) {
    for (const auto& failure : failures)
        if (failure.code == extended || failure.code == (extended & 0xff)) return failure;
    return unknown;
}

/// The engine says no more of a journal that it may not undo than that it cannot be opened.
int knownCode(int extended, sqlite3* database) {
    return extended == SQLITE_CANTOPEN && hasJournal(database) ? SQLITE_READONLY_ROLLBACK : extended;
}

std::string_view nameOf(AtFault database) {
    if (database == AtFault::Company) return "los datos de la empresa";
    return database == AtFault::Shared ? "los datos comunes (KXComun.db)" : "los datos";
}

std::string sentence(const Failure& failure, sqlite3* database, std::string_view engine) {
    if (failure.atFault)
        return text::replaced(failure.sentence, "@", nameOf(database ? failure.atFault(database) : AtFault::Unknown));
    if (!failure.saysMore || engine.empty()) return std::string(failure.sentence);
    return std::string(failure.sentence.substr(0, failure.sentence.size() - 1)).append(": ").append(engine);
}

}  // namespace

void check(int code, sqlite3* database) {
    if (code == SQLITE_OK || code == SQLITE_ROW || code == SQLITE_DONE) return;
    const bool current = database && (sqlite3_errcode(database) & 0xff) == (code & 0xff);
    const int extended = current ? sqlite3_extended_errcode(database) : code;
    const std::string engine = current ? sqlite3_errmsg(database) : sqlite3_errstr(code);
    const auto& failure = find(database ? knownCode(extended, database) : extended);
    throw ErrorBd(failure.kind, sentence(failure, database, current ? engine : ""), extended, engine);
}

}  // namespace FendaMaestros::sqlite
