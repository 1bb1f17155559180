#include "ui/Csv.h"

#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

std::string csvValue(const std::string& value) {
    if (value.find_first_of(";\"\r\n") == std::string::npos) return value;
    return "\"" + text::replaced(value, "\"", "\"\"") + "\"";
}

}  // namespace

std::string csvLine(const std::vector<std::string>& values) {
    std::string line;
    for (std::size_t i = 0; i < values.size(); ++i) line += (i == 0 ? "" : ";") + csvValue(values[i]);
    return line + "\r\n";
}

std::string csvHeading(const Recordset& rows) {
    std::vector<std::string> names;
    for (int column = 0; column < rows.columnCount(); ++column) names.push_back(rows.columnName(column));
    return csvLine(names);
}

std::string csvRows(const Recordset& rows) {
    std::string lines;
    std::vector<std::string> values(static_cast<std::size_t>(rows.columnCount()));
    for (int row = 0; row < rows.rowCount(); ++row) {
        for (int column = 0; column < rows.columnCount(); ++column)
            values[static_cast<std::size_t>(column)] = rows.cell(row, column).text();
        lines += csvLine(values);
    }
    return lines;
}

}  // namespace FendaMaestros
