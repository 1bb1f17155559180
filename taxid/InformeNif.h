#pragma once

#include <span>
#include <string>

#include "ui/ListingGrid.h"

/// The listing of the register of tax identities, as a text and as columns.
namespace FendaMaestros {

/// The read of the whole register. `expresionNombre` is the name of an entry as SQL, `orden` what follows ORDER BY.
std::string sqlInformeNif(const std::string& expresionNombre, const std::string& orden);

/// The columns of that read.
std::span<const ListingColumn> columnasInformeNif();

}  // namespace FendaMaestros
