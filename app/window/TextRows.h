#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "toolkit/RowSource.h"

namespace FendaMaestros {

/// Rows whose texts are made as they are shown.
class TextRows final : public RowSource {
public:
    using Text = std::function<std::string(int row, int column)>;

    /// `moved` is called whenever a row is made current. The first row is, unless another one is given.
    TextRows(std::vector<std::string> columns, int rows, Text text, std::function<void()> moved = {}, int current = 0)
        : columns_(std::move(columns)),
          rows_(rows),
          text_(std::move(text)),
          moved_(std::move(moved)),
          current_(current < rows ? current : rows - 1) {}

    int rowCount() const override { return rows_; }
    int columnCount() const override { return static_cast<int>(columns_.size()); }
    std::string columnName(int column) const override { return columns_.at(static_cast<std::size_t>(column)); }
    Variant cell(int row, int column) const override { return text_(row, column); }
    int currentRow() const override { return current_; }
    void moveToRow(int row) override {
        current_ = row >= 0 && row < rows_ ? row : -1;
        if (moved_) moved_();
    }

private:
    std::vector<std::string> columns_;
    int rows_;
    Text text_;
    std::function<void()> moved_;
    int current_;
};

}  // namespace FendaMaestros
