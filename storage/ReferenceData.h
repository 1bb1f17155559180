#pragma once

#include <string_view>
#include <vector>

namespace FendaMaestros::storage {

/// The text of data/NAME.csv as it was when the program was built; "" when there is no such file.
std::string_view referenceData(std::string_view name);

/// The rows of data/NAME.csv, one after the other. Its first line names the columns; values between double quotes may
/// hold commas. All texts live as long as the program.
class ReferenceRows {
public:
    /// Before the first row. Throws std::logic_error when there is no such file.
    explicit ReferenceRows(std::string_view name);

    const std::vector<std::string_view>& columns() const { return columns_; }
    /// Goes on to the next row; false behind the last one.
    bool next();
    /// The current row, a value for each column.
    const std::vector<std::string_view>& values() const { return values_; }
    /// The value of a column that is there.
    std::string_view value(std::string_view column) const;

private:
    std::string_view rest_;
    std::vector<std::string_view> columns_;
    std::vector<std::string_view> values_;
};

}  // namespace FendaMaestros::storage
