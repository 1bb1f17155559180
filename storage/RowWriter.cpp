#include "storage/RowWriter.h"

#include <algorithm>
#include <iterator>

#include "storage/Insertion.h"

namespace FendaMaestros::storage {

namespace {

constexpr int rowsOfABlock = 50;

}  // namespace

RowWriter::RowWriter(ConexionBd& connection, std::string_view table, std::span<const std::string_view> columns)
    : connection_(connection),
      width_(columns.size()),
      block_(insertion(table, columns, rowsOfABlock)),
      single_(insertion(table, columns)) {
    block_.parameters.reserve(width_ * rowsOfABlock);
}

void RowWriter::add(std::vector<Variant> cells) {
    std::ranges::move(cells, std::back_inserter(block_.parameters));
    if (block_.parameters.size() < width_ * rowsOfABlock) return;
    connection_.run(block_);
    block_.parameters.clear();
}

void RowWriter::finish() {
    for (auto cell = block_.parameters.begin(); cell != block_.parameters.end();) {
        const auto next = cell + static_cast<std::ptrdiff_t>(width_);
        single_.parameters.assign(cell, next);
        connection_.run(single_);
        cell = next;
    }
    block_.parameters.clear();
}

}  // namespace FendaMaestros::storage
