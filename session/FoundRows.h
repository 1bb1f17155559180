#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "session/Recordset.h"

namespace FendaMaestros {

/// The texts of one column as a search compares them. They are folded all at once, the first time that one is asked
/// for.
class FoldedColumn {
public:
    FoldedColumn(std::shared_ptr<const Recordset> rows, int column) : rows_(std::move(rows)), column_(column) {}

    const Recordset& rows() const { return *rows_; }
    /// Without case or accents.
    std::string_view text(int row);

private:
    void fold();

    std::shared_ptr<const Recordset> rows_;
    int column_;
    std::string texts_;
    std::vector<std::size_t> ends_;
};

/// Those rows of a recordset whose search column contains what a person is looking for: first those that begin with it,
/// then the others, both in the order of the recordset. Its first row is current to begin with.
class FoundRows final : public RowSource {
public:
    /// All rows of the recordset.
    FoundRows(std::shared_ptr<const Recordset> rows, int searchColumn);

    /// The rows that contain every word of `typed`, anywhere and without regard to case and accents. A text that goes
    /// on from the one that led here is looked for among these rows only.
    std::shared_ptr<FoundRows> search(std::string_view typed) const;

    int rowCount() const override { return static_cast<int>(found_.size()); }
    int columnCount() const override { return all().columnCount(); }
    std::string columnName(int column) const override { return all().columnName(column); }
    Variant cell(int row, int column) const override { return all().cell(recordsetRow(row), column); }
    /// What `says` says of the row of the recordset that a row is.
    bool isInactive(int row, const std::function<bool(const Recordset&, int)>& says) const {
        return says(all(), recordsetRow(row));
    }
    int currentRow() const override { return current_; }
    void moveToRow(int row) override { current_ = row >= 0 && row < rowCount() ? row : -1; }

private:
    FoundRows(std::shared_ptr<FoldedColumn> column, std::string sought)
        : column_(std::move(column)), sought_(std::move(sought)) {}

    const Recordset& all() const { return column_->rows(); }
    int recordsetRow(int row) const { return found_[static_cast<std::size_t>(row)]; }

    std::shared_ptr<FoldedColumn> column_;
    std::string sought_;
    std::vector<int> found_;
    int current_ = -1;
};

}  // namespace FendaMaestros
