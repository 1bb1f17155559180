#pragma once

#include <QAbstractTableModel>
#include <vector>

#include "toolkit/Controls.h"

namespace FendaMaestros::qt {

/// A table's content as Qt asks for it. It keeps the columns and the number of rows as of the last refresh, and reads
/// the texts when they are painted.
class TableModel final : public QAbstractTableModel {
public:
    TableModel(const Table& table, QObject* parent) : QAbstractTableModel(parent), table_(table) {}

    /// True when the columns have changed.
    bool refreshColumns();
    /// True when the number of rows has changed.
    bool refreshRows();
    const std::vector<TableColumn>& columns() const { return columns_; }

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    const Table& table_;
    std::vector<TableColumn> columns_;
    int rows_ = 0;
};

}  // namespace FendaMaestros::qt
