#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session/Recordset.h"
#include "ui/RowWrite.h"

namespace FendaMaestros {

/// A sub-account as table `PCta` keeps it. What is null there is "" or 0 here.
struct SubcuentaRecord {
    std::int64_t id = 0;  ///< 0 for one that is not stored
    std::string codigo;
    std::string nombre;
    std::int64_t idMasa = 0;
    std::int64_t idCentro = 0;
    std::int64_t idDpto = 0;
    std::int64_t idNif = 0;
    std::string asociada;         ///< code of the account of income or expense
    std::int64_t idAsociada = 0;  ///< its id
    std::string irpf;             ///< code of the withholding account
    std::int64_t origen = 0;
    std::int64_t idOrigen = 0;
    bool activa = true;

    bool operator==(const SubcuentaRecord&) const = default;
};

/// The sub-account in the current row of a read of all columns. Errors as Recordset::Fields.
SubcuentaRecord leerSubcuenta(const Recordset& row);

/// What a save stores, column by column but for the id, and the value of each for a record: codes of other accounts
/// that are not there are null.
const std::vector<std::string_view>& columnasSubcuenta();
std::vector<Variant> valoresSubcuenta(const SubcuentaRecord& account);

/// Describes these columns and values.
void describirSubcuenta(RowWrite& write, const SubcuentaRecord& account);

/// Behind the change of a sub-account: its journal lines without a name get this one, unless it is empty.
void nombrarApuntes(SesionBd& session, std::int64_t idCuenta, const std::string& nombre);

}  // namespace FendaMaestros
