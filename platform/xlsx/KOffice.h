#pragma once

#include "toolkit/Desktop.h"
#include "ui/ExternalComponents.h"

namespace FendaMaestros {

/// Exports a listing to a spreadsheet in Office Open XML (.xlsx), with memory that does not grow with the rows.
///
/// It asks for the file, proposing a name made of the title, writes it whole or not at all, and has the desktop open
/// it. Not choosing a file ends the export without an error. Under the title in bold, when there is one, stand the
/// captions of the visible columns, which stay in view and head every printed page; columns keep width, alignment and
/// number format. Texts stay texts, also those that look like numbers or formulas; what a cell cannot hold is cut.
class KOffice final : public SpreadsheetExporter {
public:
    /// `desktop` must outlive the component.
    explicit KOffice(Desktop& desktop) : desktop_(desktop) {}

    /// `source` is left as it is.
    void GridToExcel(std::shared_ptr<Recordset>& source, const DataGrid& grid) override;

private:
    Desktop& desktop_;
};

/// Makes the component available under its ProgID. `desktop` must outlive the registry.
void registerKOffice(ComponentRegistry& components, Desktop& desktop);

}  // namespace FendaMaestros
