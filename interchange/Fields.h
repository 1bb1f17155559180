#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace FendaMaestros {

/// What a file brings or takes: sub-accounts with their tax identities, or tax identities alone.
enum class ExchangeKind : std::uint8_t { Accounts, Identities };

/// What a column of such a file may hold.
enum class ExchangeField : std::uint8_t {
    Account,
    AccountName,
    Active,
    Centre,
    Department,
    Mass,
    Linked,
    Withholding,
    Document,
    DocumentType,
    Name,
    Surname1,
    Surname2,
    StreetType,
    Street,
    Number,
    Staircase,
    Floor,
    Door,
    PostalCode,
    Town,
    Province,
    Country,
    Telephone,
    Mobile,
    Fax,
    Email,
    Key,
    Subkey,
};
inline constexpr std::size_t exchangeFields = static_cast<std::size_t>(ExchangeField::Subkey) + 1;

/// A word as it is compared: small letters without accents and digits, and nothing else.
std::string plainWord(std::string_view word);

/// The fields of a kind, in the order of an exported file.
std::span<const ExchangeField> fieldsOf(ExchangeKind kind);
/// The heading that an exported file has for it, and that a person reads: "Razón social".
std::string_view captionOf(ExchangeKind kind, ExchangeField field);
/// What names it where columns are assigned by hand, "razonsocial".
std::string_view wordOf(ExchangeKind kind, ExchangeField field);

/// Which column of a file holds which field.
class ColumnMap {
public:
    ColumnMap() { columns_.fill(none); }

    static constexpr int none = -1;
    /// The position of its column, none when no column holds it.
    int columnOf(ExchangeField field) const { return columns_[static_cast<std::size_t>(field)]; }
    bool has(ExchangeField field) const { return columnOf(field) != none; }
    void set(ExchangeField field, int column) { columns_[static_cast<std::size_t>(field)] = column; }
    /// Whether any field takes this column.
    bool uses(int column) const;

private:
    std::array<int, exchangeFields> columns_;
};

/// The columns whose headings people use for a field, accents, capitals, points and blanks apart; of two that stand for
/// the same field, the first.
ColumnMap matchHeadings(ExchangeKind kind, const std::vector<std::string>& headings);
/// For a file without headings of so many columns: code, name and document, or document and name.
ColumnMap usualColumns(ExchangeKind kind, std::size_t columns);

/// Columns that a person assigns: "cuenta=1,nombre=Titular,fax=", by position from 1 on or by heading; a field without
/// a column is not read. The others stay as they are. Throws std::invalid_argument, in Spanish, when a field or a
/// column is not known.
void assignColumns(ColumnMap& map, ExchangeKind kind, std::string_view typed, const std::vector<std::string>& headings,
                   std::size_t columns);

}  // namespace FendaMaestros
