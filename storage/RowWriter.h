#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "session/ConexionBd.h"

namespace FendaMaestros::storage {

/// Inserts many rows, a block with each statement. What has been added is written for certain only by finish().
class RowWriter {
public:
    /// `table` is named as ConexionBd wants it, `columns` are those that each row brings, at least one. `connection`
    /// must outlive it.
    RowWriter(ConexionBd& connection, std::string_view table, std::span<const std::string_view> columns);

    /// A value for each column. Errors as ConexionBd::run.
    void add(std::vector<Variant> cells);
    /// Writes the rows that fill no block, one by one. Errors as ConexionBd::run.
    void finish();

private:
    ConexionBd& connection_;
    std::size_t width_;
    Statement block_, single_;
};

}  // namespace FendaMaestros::storage
