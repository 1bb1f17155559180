#pragma once

#include <vector>

#include "chartreports/FiltroCuentas.h"
#include "ui/ListingGrid.h"

/// What the chart listing looks like, wherever it is shown.
namespace FendaMaestros {

/// Masks of toolkit/Format.h: of a bound of the balance when its field is left, and of the total.
inline constexpr const char* mascaraImporte = "##,###,##0.00";
inline constexpr const char* mascaraTotal = "#,###,###,##0.00";

/// What a person calls the kind of listing.
const char* nombreInforme(TipoInforme tipo);
/// The layout under which ReportPrinter prints it; null for a kind that has none.
const char* disenoInforme(TipoInforme tipo);

/// The columns of sqlListado().
std::vector<ListingColumn> columnasCuentas(TipoInforme tipo, bool conSaldo);
/// The one of them with the code.
int columnaCodigo(TipoInforme tipo);

}  // namespace FendaMaestros
