#include "ui/ListingGrid.h"

#include <algorithm>
#include <string_view>

#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

constexpr std::string_view ascendingMark = " »";
constexpr std::string_view descendingMark = " «";

void layOutColumn(GridColumn& column, const ListingColumn& wanted) {
    column.Visible = wanted.width > 0;
    if (!column.Visible) return;
    column.Caption = wanted.caption;
    column.Width = wanted.width;
    column.TextAlignment = wanted.alignment;
    column.NumberFormat = wanted.numberFormat;
    column.Button = wanted.button;
}

std::string withoutMark(const std::string& caption) {
    for (const std::string_view mark : {ascendingMark, descendingMark})
        if (caption.ends_with(mark)) return caption.substr(0, caption.size() - mark.size());
    return caption;
}

}  // namespace

ListingGrid::ListingGrid() {
    HeadClick = [this](int column) { clickHeader(column); };
}

void ListingGrid::show(std::shared_ptr<Recordset> rows, std::span<const ListingColumn> columns) {
    rows_ = std::move(rows);
    bind(rows_);
    const std::size_t shown = std::min(columns.size(), Columns.size());
    for (std::size_t i = 0; i < shown; ++i) layOutColumn(Columns[i], columns[i]);
}

void ListingGrid::markOrder(int column, const std::string& caption, bool ascending) {
    Columns.at(static_cast<std::size_t>(column)).Caption =
        caption + std::string(ascending ? ascendingMark : descendingMark);
}

void ListingGrid::markStored(const std::string& key) {
    const auto keyOf = [this](int row) { return rows_->cell(row, 0); };
    MarkedRow = -1;
    for (int row = 0; row < rowCount(); ++row) {
        const bool newest = MarkedRow < 0 || keyOf(row).integer() > keyOf(MarkedRow).integer();
        if (key.empty() ? newest : keyOf(row).text() == key) MarkedRow = row;
    }
}

void ListingGrid::exportRows(const std::string& title) {
    const auto exporter = instanciaActual().components().create<SpreadsheetExporter>();
    exporter->sTitulo = title;
    DataGrid layout;
    layout.Columns = Columns;
    for (GridColumn& column : layout.Columns) column.Caption = withoutMark(column.Caption);
    exporter->GridToExcel(rows_, layout);
}

void ListingGrid::clickHeader(int column) {
    if (rowCount() == 0 || !Sort) return;
    ascending_ = column == lastColumn_ && !ascending_;
    lastColumn_ = column;
    Sort(column, ascending_);
}

}  // namespace FendaMaestros
