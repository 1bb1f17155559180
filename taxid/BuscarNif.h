#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "session/AyudaCampos.h"

/// What a person can look for from the register of tax identities. Errors of the reads reach the caller.
namespace FendaMaestros {

/// What a search by name says of itself.
struct RotulosBusqueda {
    const char* nombre = "Nombre";
    const char* documento = "Razon Social/Nombre";
    const char* titulo = "Buscar registros de Nif por nombre";
};

/// The Nif_Id of the entry that a person picks, by document or by name; 0 for none. `expresionNombre` is the name of
/// an entry as SQL.
std::int64_t buscarNifPorDocumento(AyudaCampos& help, const std::string& expresionNombre);
std::int64_t buscarNifPorNombre(AyudaCampos& help, const RotulosBusqueda& rotulos = {});

struct Poblacion {
    std::string nombre;
    std::string codigoPostal;
    std::string codigoProvincia;  ///< as the company's addresses have it; may be no number
};

/// The town that a person picks among the addresses of the company; nothing when none.
std::optional<Poblacion> buscarPoblacion(AyudaCampos& help);

}  // namespace FendaMaestros
