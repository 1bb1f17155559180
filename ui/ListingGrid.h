#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>

#include "session/Recordset.h"
#include "toolkit/Controls.h"

namespace FendaMaestros {

/// A column of a listing, for the column of the read at its position.
struct ListingColumn {
    std::string caption;
    Twips width = 0;  ///< 0 hides the column
    Alignment alignment = Alignment::Left;
    std::string numberFormat = {};  ///< a mask of toolkit/Format.h
    bool button = false;            ///< a button in the cell of the current row
};

/// An order that a listing can be read in.
struct ListingOrder {
    int column;           ///< the grid column whose header asks for it
    std::string orderBy;  ///< " ORDER BY Centro_Cod"
    std::string caption;  ///< of that column while the listing is sorted by it, before its mark
};

/// A grid over the rows of a read, sorted by clicks on its headers and taken to a spreadsheet.
class ListingGrid final : public DataGrid {
public:
    /// Reads the listing again in the order of a column and shows it; asked for by a click on a header, if there are
    /// rows. A first click on a column asks for its descending order, each further one for the opposite.
    std::function<void(int column, bool ascending)> Sort;

    ListingGrid();

    /// Shows rows from now on, under these columns; a column of the read beyond them is captioned by its name.
    void show(std::shared_ptr<Recordset> rows, std::span<const ListingColumn> columns);
    /// The header of a column says that the listing is sorted by it: " »" behind the caption ascending, " «"
    /// descending. Throws std::out_of_range.
    void markOrder(int column, const std::string& caption, bool ascending);
    /// Marks the row that has been stored: the one whose first column, its key, reads `key` or, for "", the one with
    /// the greatest number there. None when there is no such row.
    void markStored(const std::string& key);
    /// Null until rows are shown.
    const std::shared_ptr<Recordset>& rows() const { return rows_; }

    /// Takes the rows, as they are shown but for the mark of their order, to a spreadsheet of that title; "" for none.
    /// What the exporter hands back are the rows from then on. Errors as ComponentRegistry::create and
    /// SpreadsheetExporter::GridToExcel.
    void exportRows(const std::string& title);

private:
    void clickHeader(int column);

    std::shared_ptr<Recordset> rows_;
    int lastColumn_ = 0;
    bool ascending_ = false;
};

}  // namespace FendaMaestros
