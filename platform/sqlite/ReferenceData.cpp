#include "platform/sqlite/ReferenceData.h"

#include <sqlite3.h>

#include <vector>

#include "platform/sqlite/Check.h"

namespace FendaMaestros::sqlite {

namespace {

std::string_view takeLine(std::string_view& text) {
    const auto end = std::min(text.find('\n'), text.size());
    const auto line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

std::string_view takeValue(std::string_view& line) {
    const bool quotes = line.starts_with('"');
    if (quotes) line.remove_prefix(1);
    const auto end = std::min(line.find(quotes ? '"' : ','), line.size());
    const auto value = line.substr(0, end);
    line.remove_prefix(std::min(end + (quotes ? 2 : 1), line.size()));
    return value;
}

std::string insertion(const std::string& table, std::string_view header, const FixedColumns& fixed) {
    std::string columns(header), values = "?";
    for (const char c : header)
        if (c == ',') values += ",?";
    if (!fixed.names.empty()) {
        columns += "," + fixed.names;
        values += "," + fixed.values;
    }
    return "INSERT INTO " + table + "(" + columns + ") VALUES (" + values + ")";
}

}  // namespace

void loadReferenceData(const Database& database, const std::string& table, std::string_view name,
                       const FixedColumns& fixed) {
    auto text = referenceData(name);
    const auto insert = database.prepare(insertion(table, takeLine(text), fixed));
    while (!text.empty()) {
        auto line = takeLine(text);
        for (int i = 1; i <= sqlite3_bind_parameter_count(insert.get()); ++i) {
            const auto value = takeValue(line);
            check(sqlite3_bind_text64(insert.get(), i, value.data(), value.size(), SQLITE_STATIC, SQLITE_UTF8),
                  database.handle());
        }
        check(sqlite3_step(insert.get()), database.handle());
        sqlite3_reset(insert.get());
    }
}

}  // namespace FendaMaestros::sqlite
