#pragma once

#include <memory>
#include <span>
#include <string>

#include "toolkit/Desktop.h"
#include "toolkit/Document.h"
#include "ui/ListingGrid.h"

/// The listing of the register of tax identities, as a text and as columns.
namespace FendaMaestros {

/// The read of the whole register. `expresionNombre` is the name of an entry as SQL, `orden` what follows ORDER BY.
std::string sqlInformeNif(const std::string& expresionNombre, const std::string& orden);

/// The columns of that read.
std::span<const ListingColumn> columnasInformeNif();

/// Its title on paper and of its files.
inline constexpr const char* tituloInformeNif = "Listado de identificadores";
/// Its rows as printed on that day. Throws ErrorBd when the company has no name.
std::shared_ptr<const PagedDocument> documentoInformeNif(std::shared_ptr<Recordset> rows, const Date& day);

}  // namespace FendaMaestros
