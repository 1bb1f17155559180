#include "storage/Insertion.h"

namespace FendaMaestros::storage {

Statement insertion(std::string_view table, std::span<const std::string_view> columns, int rows) {
    std::string names, marks;
    for (const auto column : columns) {
        names.append(names.empty() ? "" : ", ").append(column);
        marks += marks.empty() ? "(?" : ", ?";
    }
    marks += ')';
    std::string sql = "INSERT INTO " + std::string(table) + " (" + names + ") VALUES " + marks;
    for (int row = 1; row < rows; ++row) sql += ", " + marks;
    return {std::move(sql), {}};
}

}  // namespace FendaMaestros::storage
