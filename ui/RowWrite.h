#pragma once

#include <exception>
#include <string>
#include <string_view>

#include "session/ErrorBd.h"
#include "session/SesionBd.h"

namespace FendaMaestros {

/// The session has refused the statement of a save that then ends without a word (the component's error 999): the
/// screen catches it apart from all others.
struct SilentRefusal : std::exception {
    const char* what() const noexcept override { return "La base de datos no ha admitido la grabación."; }
};

/// Carries out one write of such a save.
template <class Write>
void refusingSilently(Write&& write) {
    try {
        write();
    } catch (const ErrorBd& error) {
        if (error.kind() == ErrorBd::Kind::Refused) throw SilentRefusal{};
        throw;
    }
}

/// Throws ErrorBd (Constraint), with a sentence for the person, when more than one row of `table` has that value in
/// `column`: asked behind an insert and in its transaction, it finds what another program has inserted since this one
/// looked.
void requireUnique(ConexionBd& connection, const std::string& table, const std::string& column,
                   const std::string& value);

/// Deletes the rows under a condition; arguments and errors as RowWrite::update().
void deleteRows(SesionBd& session, std::string_view table, std::string_view where);

/// One write, described and carried out in the order that the session wants: table, columns, then update(), insert() or
/// erase().
class RowWrite {
public:
    RowWrite(SesionBd& session, std::string_view table) : session_(session) {
        session_.Tabla(table);
        session_.Reiniciar(0);
    }

    RowWrite& column(std::string_view column, long kind, const Variant& value) {
        session_.Campos().Agregar(column, kind, value, 2);
        return *this;
    }

    /// `where` in full with its leading blank. Throws ErrorBd, also (kind Refused) when the session refuses the
    /// statement.
    void update(std::string_view where);
    /// Errors as update().
    void insert();
    /// Deletes the rows under a condition; columns are not asked for. Errors as update().
    void erase(std::string_view where);

private:
    SesionBd& session_;
};

}  // namespace FendaMaestros
