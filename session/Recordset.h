#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "toolkit/RowSource.h"

namespace FendaMaestros {

struct Field {
    std::string Name;
    Variant Value;
};

/// The rows of one read, all on the client, with a position among them. Column names are compared without regard to
/// case. A fresh recordset stands on its first row; an empty one is at both ends at once.
class Recordset final : public RowSource {
public:
    /// The read was stopped before its last row.
    bool Partial = false;
    /// Raised after every change of the current row, and when a grid is bound: the end positions included.
    std::function<void()> MoveComplete;

    /// --- filling, by the adapter: the cells of a row one after the other
    explicit Recordset(std::vector<std::string> columns) : columns_(std::move(columns)) {}
    /// Makes room, so that a large read is not moved about while it grows.
    void reserve(int rows, std::size_t textBytes) {
        cells_.reserve(static_cast<std::size_t>(rows) * columns_.size());
        texts_.reserve(textBytes);
    }
    void appendNull() { cells_.push_back({}); }
    void appendInteger(std::int64_t value) { cells_.push_back({.integer = value, .length = 0, .type = Type::Integer}); }
    void appendReal(double value) { cells_.push_back({.real = value, .length = 0, .type = Type::Real}); }
    void appendText(std::string_view value) {
        cells_.push_back(
            {.offset = texts_.size(), .length = static_cast<std::uint32_t>(value.size()), .type = Type::Text});
        texts_.append(value);
    }

    /// --- reading
    bool Eof() const { return position_ >= rowCount(); }
    bool Bof() const { return position_ < 0 || rowCount() == 0; }
    int RecordCount() const { return rowCount(); }
    /// Throws ErrorBd when there is no such column, or no current row.
    Field Fields(std::string_view name) const;
    /// Does nothing at the end.
    void MoveNext();
    void MoveFirst() { moveToRow(0); }
    /// Looks forward from the first row for the one whose column equals a literal: "Codigo = '12'". Numbers are
    /// compared as numbers, texts without regard to case. Not found leaves the position at the end. Throws ErrorBd for
    /// a text of another form or an unknown column.
    void Find(std::string_view criteria);
    /// Forgets the rows; an empty recordset without columns remains.
    void Close();

    /// --- RowSource
    int rowCount() const override { return columns_.empty() ? 0 : static_cast<int>(cells_.size() / columns_.size()); }
    int columnCount() const override { return static_cast<int>(columns_.size()); }
    std::string columnName(int column) const override { return columns_.at(static_cast<std::size_t>(column)); }
    Variant cell(int row, int column) const override;
    int currentRow() const override { return Eof() || Bof() ? -1 : position_; }
    void moveToRow(int row) override;

    /// The same columns with the same values, wherever either stands.
    bool sameContents(const Recordset& other) const;
    /// Bytes of all text cells together.
    std::size_t textBytes() const { return texts_.size(); }
    /// -1 when there is no such column.
    int columnIndex(std::string_view name) const;
    /// The text of a text cell without a copy, valid as long as the recordset; "" for every other type.
    std::string_view textView(int row, int column) const;

private:
    enum class Type : std::uint8_t { Null, Integer, Real, Text };
    /// 16 bytes; texts lie one after the other in texts_.
    struct Cell {
        union {
            std::int64_t integer = 0;
            double real;
            std::uint64_t offset;
        };
        std::uint32_t length = 0;
        Type type = Type::Null;
    };

    const Cell& at(int row, int column) const {
        return cells_[static_cast<std::size_t>(row) * columns_.size() + static_cast<std::size_t>(column)];
    }

    std::vector<std::string> columns_;
    std::vector<Cell> cells_;
    std::string texts_;
    int position_ = 0;
};

}  // namespace FendaMaestros
