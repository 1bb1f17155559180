#pragma once

#include <string>

#include "chartreports/FiltroCuentas.h"

/// The listing of the official plan as a text, as chartreports/FiltroCuentas.h does it for the chart.
namespace FendaMaestros {

/// Which accounts of the official plan are listed.
struct FiltroPgc {
    std::string plan = "2008";
    std::string desde = {};  ///< as in FiltroCuentas
    std::string hasta = {};
    std::string masa = {};  ///< Masas_Id; empty for all
    std::string nombre = {};
    bool enCualquierParte = false;
};

/// The order of a grid column; any but 2 and 3 gives that of the codes.
OrdenCuentas ordenPgc(int nColumna);

/// The read of the listing: identity, code, description and the name of the balance mass, null for none.
std::string sqlListadoPgc(const FiltroPgc& filtro, int nColumna, bool bAsc);

}  // namespace FendaMaestros
