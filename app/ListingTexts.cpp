#include "app/ListingTexts.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "toolkit/Format.h"
#include "toolkit/Text.h"
#include "ui/Csv.h"

namespace FendaMaestros {

namespace {

constexpr const char* columnGap = "  ";

/// A column that is shown.
struct ShownColumn {
    int position;
    const ListingColumn& column;

    bool isAmount() const { return !column.numberFormat.empty(); }
    std::string text(const Recordset& rows, int row) const {
        const Variant value = rows.cell(row, position);
        return isAmount() ? text::trim(format(value, column.numberFormat)) : value.text();
    }
};

std::vector<ShownColumn> shownColumns(const Listing& listing) {
    std::vector<ShownColumn> shown;
    for (std::size_t i = 0; i < listing.columns.size(); ++i)
        if (listing.columns[i].width > 0) shown.push_back({static_cast<int>(i), listing.columns[i]});
    return shown;
}

std::vector<std::string> captionsOf(const std::vector<ShownColumn>& columns) {
    std::vector<std::string> captions;
    for (const ShownColumn& shown : columns) captions.push_back(shown.column.caption);
    return captions;
}

// --- table

std::vector<std::string> totalCells(const Listing& listing, std::size_t columns, const std::string& mask) {
    std::vector<std::string> cells(columns);
    if (columns > 1) cells[columns - 2] = "Total...";
    cells.back() = text::trim(format(*listing.total, mask));
    return cells;
}

void appendLine(std::string& to, const std::vector<std::string>& cells, const std::vector<ShownColumn>& columns,
                const std::vector<std::size_t>& widths) {
    std::string line;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const std::string filling(widths[i] - text::length(cells[i]), ' ');
        const bool right = columns[i].column.alignment == Alignment::Right;
        line += (i == 0 ? "" : columnGap) + (right ? filling + cells[i] : cells[i] + filling);
    }
    to += text::trimEnd(line) + "\n";
}

// --- JSON

/// Small letters without accents; whatever else stands between words becomes a "_".
std::string jsonName(const std::string& caption) {
    std::string name;
    for (const char c : text::folded(caption)) {
        const bool plain = text::isDigit(c) || (c >= 'a' && c <= 'z');
        if (plain)
            name += c;
        else if (!name.empty() && name.back() != '_')
            name += '_';
    }
    return name;
}

std::string jsonValue(const Variant& value) {
    if (value.isNull()) return "null";
    return std::holds_alternative<std::string>(value.storage()) ? jsonString(value.text()) : value.text();
}

}  // namespace

std::string tableText(const Listing& listing) {
    const std::vector<ShownColumn> columns = shownColumns(listing);
    std::vector<std::vector<std::string>> lines{captionsOf(columns)};
    for (int row = 0; row < listing.rows->rowCount(); ++row) {
        auto& cells = lines.emplace_back();
        for (const ShownColumn& column : columns) cells.push_back(text::printable(column.text(*listing.rows, row)));
    }
    if (listing.total) lines.push_back(totalCells(listing, columns.size(), columns.back().column.numberFormat));

    std::vector<std::size_t> widths(columns.size());
    for (const auto& cells : lines)
        for (std::size_t i = 0; i < cells.size(); ++i) widths[i] = std::max(widths[i], text::length(cells[i]));

    std::string table;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        appendLine(table, lines[i], columns, widths);
        if (i > 0) continue;
        std::vector<std::string> rule;
        for (const std::size_t width : widths) rule.emplace_back(width, '-');
        appendLine(table, rule, columns, widths);
    }
    return table;
}

std::string csvText(const Listing& listing) {
    const std::vector<ShownColumn> columns = shownColumns(listing);
    std::string csv = csvLine(captionsOf(columns));
    std::vector<std::string> values(columns.size());
    for (int row = 0; row < listing.rows->rowCount(); ++row) {
        std::ranges::transform(columns, values.begin(), [&](const ShownColumn& column) {
            const std::string value = column.text(*listing.rows, row);
            return column.isAmount() ? text::replaced(value, ".", "") : value;
        });
        csv += csvLine(values);
    }
    return csv;
}

std::string jsonString(const std::string& text) {
    std::string json = "\"";
    for (const char32_t character : text::characters(text)) {
        char code[8];
        if (character == U'"' || character == U'\\') {
            json += '\\';
            text::append(json, character);
        } else if (text::isControl(character)) {
            std::snprintf(code, sizeof code, "\\u%04X", static_cast<unsigned>(character));
            json += code;
        } else {
            text::append(json, character);
        }
    }
    return json + "\"";
}

std::string jsonText(const Listing& listing) {
    const std::vector<ShownColumn> columns = shownColumns(listing);
    std::string json = "{" + jsonString(listing.what) + ":[";
    for (int row = 0; row < listing.rows->rowCount(); ++row) {
        std::string object;
        for (const ShownColumn& column : columns)
            object += (object.empty() ? "" : ",") + jsonString(jsonName(column.column.caption)) + ":" +
                      jsonValue(listing.rows->cell(row, column.position));
        json += (row == 0 ? "\n{" : ",\n{") + object + "}";
    }
    json += "]";
    if (listing.total) json += ",\"total\":" + jsonValue(*listing.total);
    return json + "}\n";
}

}  // namespace FendaMaestros
