#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

/// The tables that a company and the shared database consist of, as data: each adapter composes its engine's own
/// statements of them.
namespace FendaMaestros::storage {

enum class ColumnKind : std::uint8_t {
    Identity,  ///< the key, a whole number; a row that comes without gets one above all that there have been
    Integer,
    Amount,  ///< money, exact to 1/10000
    Text,    ///< UTF-8, compared as in Spanish: case and blanks at the end do not count, accents do
    Date,    ///< written year-month-day
    Any,     ///< a whole number or a text, which comes back as it was stored
};

struct Column {
    std::string_view name;
    ColumnKind kind;
    /// The table's key, when it has no Identity.
    bool key = false;
};

struct Table {
    std::string_view name;
    std::vector<Column> columns;
};

struct Index {
    std::string_view name;
    std::string_view table;
    /// What rows are looked for by, in this order.
    std::vector<std::string_view> columns;
    /// What a read that looks for them needs besides, so that the index answers it alone.
    std::vector<std::string_view> carried = {};
};

struct Schema {
    /// Of the tables as this program makes them.
    int version;
    std::vector<Table> tables;
    std::vector<Index> indexes;
};

const Schema& companySchema();
const Schema& sharedSchema();

/// Throws ErrorBd (NewerVersion) when tables were made by a version of the program that this one does not know.
void checkVersion(const Schema& schema, std::int64_t found);

}  // namespace FendaMaestros::storage
