#include "session/Recordset.h"

#include <algorithm>
#include <optional>

#include "session/ErrorBd.h"
#include "session/TypedText.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

std::string_view withoutTrailingBlanks(std::string_view text) { return text.substr(0, text.find_last_not_of(' ') + 1); }

std::string_view withoutBlanks(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view() : withoutTrailingBlanks(text.substr(first));
}

struct Criteria {
    std::string_view column;
    std::string literal;
};

/// "Codigo = '12'": the literal is all that lies between the outer quotes, where a doubled quote stands for one.
Criteria readCriteria(std::string_view text) {
    const auto equals = text.find('=');
    const std::string_view column = withoutBlanks(text.substr(0, equals));
    const std::string_view quoted =
        equals == std::string_view::npos ? std::string_view() : withoutBlanks(text.substr(equals + 1));
    if (column.empty() || quoted.size() < 2 || quoted.front() != '\'' || quoted.back() != '\'')
        throw ErrorBd(ErrorBd::Kind::Refused, "No se entiende la búsqueda: " + std::string(text));
    return {column, text::replaced(quoted.substr(1, quoted.size() - 2), "''", "'")};
}

/// Compares texts with one literal, without regard to case and trailing blanks.
class SameText {
public:
    explicit SameText(std::string_view literal)
        : literal_(withoutTrailingBlanks(literal)), capitals_(text::upper(literal_)) {}

    bool operator()(std::string_view other) const {
        other = withoutTrailingBlanks(other);
        // A letter and its capital take the same number of bytes.
        if (other.size() != literal_.size()) return false;
        return text::equalIgnoringCase(other, literal_) || text::upper(other) == capitals_;
    }

private:
    std::string_view literal_;
    std::string capitals_;
};

}  // namespace

Field Recordset::Fields(std::string_view name) const {
    const int column = columnIndex(name);
    if (column < 0) throw ErrorBd(ErrorBd::Kind::Refused, "La consulta no tiene la columna " + std::string(name));
    if (currentRow() < 0) throw ErrorBd(ErrorBd::Kind::Refused, "La consulta no está en ninguna fila");
    return {columnName(column), cell(position_, column)};
}

void Recordset::MoveNext() {
    if (!Eof()) moveToRow(position_ + 1);
}

void Recordset::Find(std::string_view criteria) {
    const auto [name, literal] = readCriteria(criteria);
    const int column = columnIndex(name);
    if (column < 0) throw ErrorBd(ErrorBd::Kind::Refused, "La consulta no tiene la columna " + std::string(name));

    const SameText sameText(literal);
    const std::optional<Variant> written = typed::number(literal);
    const std::optional<double> number = written ? std::optional(written->real()) : std::nullopt;
    const auto matches = [&](int row) {
        switch (at(row, column).type) {
            case Type::Integer:
                return number == static_cast<double>(at(row, column).integer);
            case Type::Real:
                return number == at(row, column).real;
            case Type::Text:
                return sameText(textView(row, column));
            case Type::Null:
                break;
        }
        return false;
    };
    int row = 0;
    while (row < rowCount() && !matches(row)) ++row;
    moveToRow(row);
}

void Recordset::Close() {
    columns_.clear();
    cells_.clear();
    texts_.clear();
    position_ = 0;
}

Variant Recordset::cell(int row, int column) const {
    const Cell& cell = at(row, column);
    switch (cell.type) {
        case Type::Integer:
            return cell.integer;
        case Type::Real:
            return cell.real;
        case Type::Text:
            return std::string(textView(row, column));
        case Type::Null:
            break;
    }
    return {};
}

void Recordset::moveToRow(int row) {
    position_ = row < 0 || row >= rowCount() ? rowCount() : row;
    if (MoveComplete) MoveComplete();
}

int Recordset::columnIndex(std::string_view name) const {
    const auto found = std::ranges::find_if(
        columns_, [name](const std::string& column) { return text::equalIgnoringCase(column, name); });
    return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

std::string_view Recordset::textView(int row, int column) const {
    const Cell& cell = at(row, column);
    if (cell.type != Type::Text) return {};
    return std::string_view(texts_).substr(cell.offset, cell.length);
}

bool Recordset::sameContents(const Recordset& other) const {
    if (columns_ != other.columns_ || rowCount() != other.rowCount()) return false;
    for (int row = 0; row < rowCount(); ++row)
        for (int column = 0; column < columnCount(); ++column)
            if (cell(row, column) != other.cell(row, column)) return false;
    return true;
}

}  // namespace FendaMaestros
