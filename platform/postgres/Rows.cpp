#include "platform/postgres/Rows.h"

#include <libpq-fe.h>

#include <charconv>
#include <cstdint>

#include "session/ErrorBd.h"

namespace FendaMaestros::postgres {

namespace {

/// Types by the numbers that the engine has fixed for them.
enum Type : Oid {
    boolean = 16,
    int8 = 20,
    int2 = 21,
    int4 = 23,
    oid = 26,
    float4 = 700,
    float8 = 701,
    numeric = 1700,
    jsonb = 3802,
};

std::int64_t integerOf(std::string_view text) {
    std::int64_t value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    return value;
}

void appendReal(Recordset& rows, std::string_view text) {
    double value = 0;
    std::from_chars(text.data(), text.data() + text.size(), value);
    rows.appendReal(value);
}

/// A number without decimals is whole, as the sum of whole numbers is.
void appendNumeric(Recordset& rows, std::string_view text) {
    std::int64_t whole = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), whole);
    if (error == std::errc() && end == text.data() + text.size()) return rows.appendInteger(whole);
    appendReal(rows, text);
}

constexpr std::string_view hexadecimal = "0123456789abcdef";

/// What a column of any kind holds: a number, or a text between quotes.
std::string anyOf(std::string_view text) {
    std::string json = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\') json += '\\';
        if (static_cast<unsigned char>(c) >= ' ') {
            json += c;
            continue;
        }
        json += "\\u00";
        json += hexadecimal[static_cast<unsigned char>(c) >> 4];
        json += hexadecimal[static_cast<unsigned char>(c) & 15];
    }
    return json + '"';
}

std::string withoutEscapes(std::string_view json) {
    std::string text;
    for (std::size_t i = 0; i < json.size(); ++i) {
        if (json[i] != '\\') {
            text += json[i];
            continue;
        }
        switch (json[++i]) {
            case 'b':
                text += '\b';
                break;
            case 'f':
                text += '\f';
                break;
            case 'n':
                text += '\n';
                break;
            case 'r':
                text += '\r';
                break;
            case 't':
                text += '\t';
                break;
            case 'u': {
                int code = 0;
                std::from_chars(json.data() + i + 1, json.data() + i + 5, code, 16);
                text += static_cast<char>(code);
                i += 4;
                break;
            }
            default:
                text += json[i];
        }
    }
    return text;
}

void appendAny(Recordset& rows, std::string_view json) {
    if (json.front() != '"') return appendNumeric(rows, json);
    rows.appendText(withoutEscapes(json.substr(1, json.size() - 2)));
}

void append(Recordset& rows, Oid type, std::string_view text) {
    switch (type) {
        case boolean:
            return rows.appendInteger(text == "t" ? 1 : 0);
        case int2:
        case int4:
        case int8:
        case oid:
            return rows.appendInteger(integerOf(text));
        case float4:
        case float8:
            return appendReal(rows, text);
        case numeric:
            return appendNumeric(rows, text);
        case jsonb:
            return appendAny(rows, text);
        default:
            return rows.appendText(text);
    }
}

}  // namespace

void appendRows(Recordset& rows, const PGresult* result) {
    const int columns = PQnfields(result);
    std::vector<Oid> types;
    for (int column = 0; column < columns; ++column) types.push_back(PQftype(result, column));
    for (int row = 0; row < PQntuples(result); ++row)
        for (int column = 0; column < columns; ++column) {
            if (PQgetisnull(result, row, column)) {
                rows.appendNull();
                continue;
            }
            const auto length = static_cast<std::size_t>(PQgetlength(result, row, column));
            append(rows, types[static_cast<std::size_t>(column)], {PQgetvalue(result, row, column), length});
        }
}

Parameter parameterOf(std::string text) {
    if (text.find('\0') != std::string::npos)
        throw ErrorBd(ErrorBd::Kind::Constraint, "La base de datos no admite un texto con un carácter nulo.");
    return text;
}

bool isAnyKind(Oid type) { return type == jsonb; }

Parameter parameterOf(const Variant& value, bool anyKind) {
    if (value.isNull()) return {};
    if (anyKind && std::holds_alternative<std::string>(value.storage())) return parameterOf(anyOf(value.text()));
    return parameterOf(value.text());
}

}  // namespace FendaMaestros::postgres
