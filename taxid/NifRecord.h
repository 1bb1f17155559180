#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "session/Recordset.h"
#include "ui/RowWrite.h"

namespace FendaMaestros {

/// The kinds of tax document, `Nif_TipDoc`.
namespace documento {
inline constexpr int Cif = 0;
inline constexpr int Nif = 1;
inline constexpr int Nie = 2;
inline constexpr int Otros = 3;
}  // namespace documento

/// One entry of the register of tax identities, shared table `Nif`. What is null there is "" here.
struct NifRecord {
    std::int64_t id = 0;                 ///< 0 for one that is not in the register
    int tipoDocumento = documento::Cif;  ///< -1: unknown, and left as it is by a write
    std::string documento;
    std::string nombre;  ///< of a person, or the company's
    std::string apellido1;
    std::string apellido2;
    std::string tipoVia;  ///< code of two characters
    std::string via;
    std::string numero;
    std::string escalera;
    std::string piso;
    std::string puerta;
    std::string codigoPostal;
    std::string poblacion;
    std::string provincia;  ///< code of two characters in Spain, any text elsewhere
    std::string pais;       ///< code of three characters, Spain "011"
    std::string telefono;
    std::string fax;
    std::string movil;
    std::string correo;
    std::string claveRetencion;  ///< one character
    std::string subclave;        ///< two characters

    bool operator==(const NifRecord&) const = default;
};

/// The entry in the current row of a read of all columns. Errors as Recordset::Fields.
NifRecord leerNif(const Recordset& row);

/// What the register stores of an entry, column by column but for the id, and the value of each for a record: the
/// surnames of an organisation, whatever the record says, and withholding keys that are not there are null.
const std::vector<std::string_view>& columnasNif();
std::vector<Variant> valoresNif(const NifRecord& nif);

/// Describes these columns and values; an unknown type of document is left out.
void describirNif(RowWrite& write, const NifRecord& nif);

}  // namespace FendaMaestros
