#include "ui/Csv.h"

#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

std::string csvValue(const std::string& value) {
    if (value.find_first_of(";\"\r\n") == std::string::npos) return value;
    return "\"" + text::replaced(value, "\"", "\"\"") + "\"";
}

bool isFormulaSign(char c) { return c == '=' || c == '+' || c == '-' || c == '@' || c == '\''; }

}  // namespace

std::string shieldedText(std::string text) {
    if (!text.empty() && isFormulaSign(text.front())) text.insert(0, 1, '\'');
    return text;
}

std::string_view unshieldedText(std::string_view shielded) {
    const bool isShielded = shielded.size() > 1 && shielded[0] == '\'' && isFormulaSign(shielded[1]);
    return shielded.substr(isShielded ? 1 : 0);
}

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
