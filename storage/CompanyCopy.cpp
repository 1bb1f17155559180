#include "storage/CompanyCopy.h"

#include <algorithm>
#include <map>
#include <optional>
#include <string>

#include "session/ErrorBd.h"
#include "storage/RowWriter.h"
#include "storage/Schema.h"

namespace FendaMaestros::storage {

namespace {

/// Rows of one read.
constexpr int rowsRead = 5000;

/// Reads stay true from here on; nothing is written that could be kept.
class OneView {
public:
    explicit OneView(ConexionBd& connection) : connection_(connection) { connection_.BeginTrans(); }
    OneView(const OneView&) = delete;
    OneView& operator=(const OneView&) = delete;
    ~OneView() { connection_.RollbackTrans(); }

private:
    ConexionBd& connection_;
};

/// A table as the texts name it and its columns.
struct NamedTable {
    NamedTable(std::string_view place, const Table& table)
        : name(table.name), full(std::string(place) + std::string(table.name)) {
        for (const Column& column : table.columns) {
            if (column.kind == ColumnKind::Identity || column.key) key = static_cast<int>(columns.size());
            if (column.kind == ColumnKind::Identity) identity = column.name;
            columns.push_back(column.name);
        }
    }

    /// As many rows as one read takes, in the order of their identity and behind the one given, if any; all rows of a
    /// table without identities.
    std::string reading(std::optional<std::int64_t> behind) const {
        std::string names;
        for (const auto column : columns) names.append(names.empty() ? "" : ", ").append(column);
        if (identity.empty()) return "SELECT " + names + " FROM " + full;
        const std::string order(identity);
        const std::string where = behind ? " WHERE " + order + " > " + std::to_string(*behind) : "";
        return "SELECT TOP " + std::to_string(rowsRead) + " " + names + " FROM " + full + where + " ORDER BY " + order;
    }

    std::string_view name;
    std::string full;
    std::vector<std::string_view> columns;
    /// Position of the column that tells rows apart; nothing when none does.
    std::optional<int> key;
    /// Empty when the table has none.
    std::string_view identity;
};

std::vector<Variant> cellsOf(const Recordset& rows, int row) {
    std::vector<Variant> cells;
    for (int column = 0; column < rows.columnCount(); ++column) cells.push_back(rows.cell(row, column));
    return cells;
}

/// Calls `use(rows)` for block after block of the table.
template <class Use>
void eachBlock(ConexionBd& connection, const NamedTable& table, Use&& use) {
    std::optional<std::int64_t> behind;
    while (true) {
        const auto rows = connection.Execute(table.reading(behind));
        use(*rows);
        if (table.identity.empty() || rows->rowCount() < rowsRead) return;
        behind = rows->cell(rows->rowCount() - 1, *table.key).integer();
    }
}

/// Copies the rows that `wanted` says.
template <class Wanted>
CopiedTable copyRows(ConexionBd& from, ConexionBd& to, const NamedTable& table, const CopyProgress& progress,
                     Wanted&& wanted) {
    CopiedTable result{.name = table.name};
    RowWriter writer(to, table.full, table.columns);
    eachBlock(from, table, [&](const Recordset& rows) {
        for (int row = 0; row < rows.rowCount(); ++row) {
            auto cells = cellsOf(rows, row);
            if (!wanted(cells)) {
                ++result.alreadyThere;
                continue;
            }
            writer.add(std::move(cells));
            ++result.copied;
        }
        progress(table.name, result.copied);
    });
    writer.finish();
    return result;
}

CopiedTable copyAll(ConexionBd& from, ConexionBd& to, const NamedTable& table, const CopyProgress& progress) {
    return copyRows(from, to, table, progress, [](const auto&) { return true; });
}

/// Adds the rows that the goal does not have.
CopiedTable addMissing(ConexionBd& from, ConexionBd& to, const NamedTable& table, const CopyProgress& progress) {
    std::map<std::string, std::vector<Variant>> there;
    const auto key = static_cast<std::size_t>(table.key.value());
    eachBlock(to, table, [&](const Recordset& rows) {
        for (int row = 0; row < rows.rowCount(); ++row) {
            auto cells = cellsOf(rows, row);
            there.emplace(cells[key].text(), std::move(cells));
        }
    });
    return copyRows(from, to, table, progress, [&](const std::vector<Variant>& cells) {
        const auto same = there.find(cells[key].text());
        if (same == there.end()) return true;
        if (same->second == cells) return false;
        throw ErrorBd(ErrorBd::Kind::Constraint, "En el destino hay otros datos comunes: " + std::string(table.name) +
                                                     " " + same->first + " no es igual en los dos sitios.");
    });
}

bool hasIdentities(ConexionBd& connection) {
    return connection.Execute("SELECT COUNT(*) FROM KXComun.dbo.Nif")->cell(0, 0).integer() != 0;
}

}  // namespace

std::vector<CopiedTable> copyCompany(ConexionBd& from, ConexionBd& to, bool first, const CopyProgress& progress) {
    const OneView oneView(from);
    const bool replacing = first && !hasIdentities(to);
    std::vector<CopiedTable> copied;
    for (const Table& shared : sharedSchema().tables) {
        const NamedTable table("KXComun.dbo.", shared);
        if (replacing) to.run({"DELETE FROM " + table.full, {}});
        copied.push_back(replacing ? copyAll(from, to, table, progress) : addMissing(from, to, table, progress));
    }
    for (const Table& own : companySchema().tables) copied.push_back(copyAll(from, to, {"", own}, progress));
    return copied;
}

}  // namespace FendaMaestros::storage
