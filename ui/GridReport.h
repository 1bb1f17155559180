#pragma once

#include <span>
#include <string>

#include "ui/BandedReport.h"
#include "ui/ListingGrid.h"

namespace FendaMaestros {

/// A listing printed as its grid shows it, on landscape paper: the columns that are not hidden, their widths shrunk in
/// proportion to what fits. Under the company of InstanciaActual's session, the title and the selection.
class GridReport final : public BandedReport {
public:
    /// `columns` are those of `rows`, by position. Throws ErrorBd when the company has no name.
    GridReport(const std::string& title, const std::string& selection, std::shared_ptr<Recordset> rows,
               std::span<const ListingColumn> columns);

private:
    void addColumn(const std::string& field, const ListingColumn& column, Twips left, Twips width);
};

}  // namespace FendaMaestros
