#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "session/Recordset.h"

/// The checks of the chart of accounts, and the deletion of what they found wrong and nobody uses.
namespace FendaMaestros {

/// Sub-accounts whose code is repeated, or is not as long as the company's.
struct SubcuentaErronea {
    std::int64_t id = 0;  ///< PCta_Id
    std::string codigo;
    std::string descripcion;
    bool conDiario = false;  ///< journal lines are posted to it, so that it stays

    bool operator==(const SubcuentaErronea&) const = default;
};

/// The read of that check; `digitos` are those of the company's sub-accounts. Its columns: the identity, the code, the
/// description and how many journal lines are posted to the account.
std::string sqlSubcuentasErroneas(const std::string& digitos);
/// What the read has found, in its order.
std::vector<SubcuentaErronea> subcuentasErroneas(const Recordset& rows);

/// The read of the active sub-accounts, in the order of their codes.
std::string sqlSubcuentasActivas();
/// The look-up of an account of the official plan; `plan` is its year, `seccion` 1 for the general plan.
std::string sqlCuentaPlan(const std::string& plan, int seccion, const std::string& codigo);

/// Whether a sub-account hangs from an account of the official plan: its first 3, 4 or 5 characters are one. Reads
/// through InstanciaActual, until one is found.
bool perteneceAlPlan(const std::string& plan, int seccion, const std::string& codigo);

/// What a deletion has come to.
struct Eliminacion {
    int eliminadas = 0;
    /// Accounts that another program has changed, deleted or posted to since they were listed; they stay as they are.
    int omitidas = 0;
    /// The file with what the deleted rows held; empty for a session that keeps no files.
    std::string copia;
};

/// Deletes, in one transaction, those of the listed accounts without journal; before, their rows are written to a file.
/// Where a row of a repeated code stays and has no description, it gets the first one of a deleted row of its code.
/// Writes through the session of InstanciaActual. Throws ErrorBd, or std::runtime_error with a Spanish sentence when
/// the file cannot be written; then nothing has been deleted.
Eliminacion eliminarSinDiario(const std::vector<SubcuentaErronea>& listadas);

}  // namespace FendaMaestros
