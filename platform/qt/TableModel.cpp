#include "platform/qt/TableModel.h"

#include <QApplication>
#include <QFont>
#include <QPalette>

#include "platform/qt/Contrast.h"
#include "toolkit/Text.h"

namespace FendaMaestros::qt {

namespace {

QVariant alignmentOf(Alignment alignment) {
    const Qt::Alignment across = alignment == Alignment::Right    ? Qt::AlignRight
                                 : alignment == Alignment::Center ? Qt::AlignHCenter
                                                                  : Qt::AlignLeft;
    return QVariant::fromValue(across | Qt::AlignVCenter);
}

/// How a marked row stands out.
QVariant markOf(int role) {
    if (role == Qt::FontRole) {
        QFont bold;
        bold.setBold(true);
        return bold;
    }
    const QPalette theme = QApplication::palette();
    if (role == Qt::BackgroundRole) return mixed(theme.color(QPalette::Base), theme.color(QPalette::Highlight), 0.2);
    return {};
}

/// Of what is out of use; as quiet as can be read on both kinds of rows.
QColor quietText() {
    const QPalette theme = QApplication::palette();
    const QColor base = theme.color(QPalette::Base), other = theme.color(QPalette::AlternateBase);
    return standingOut(mixed(theme.color(QPalette::Text), base, 0.5), {base, other}, textContrast);
}

}  // namespace

bool TableModel::refreshColumns() {
    std::vector<TableColumn> columns;
    for (int column = 0; column < table_.columnCount(); ++column) columns.push_back(table_.column(column));
    if (columns == columns_) return false;
    beginResetModel();
    columns_ = std::move(columns);
    endResetModel();
    return true;
}

bool TableModel::refreshRows() {
    const int rows = table_.rowCount();
    if (rows == rows_) return false;
    if (rows > rows_) {
        beginInsertRows({}, rows_, rows - 1);
        rows_ = rows;
        endInsertRows();
    } else {
        beginRemoveRows({}, rows, rows_ - 1);
        rows_ = rows;
        endRemoveRows();
    }
    return true;
}

int TableModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant TableModel::data(const QModelIndex& index, int role) const {
    const auto column = static_cast<std::size_t>(index.column());
    // A handler may have taken rows or columns away since the last refresh.
    if (!index.isValid() || index.row() >= table_.rowCount() || column >= columns_.size()) return {};
    if (index.column() >= table_.columnCount()) return {};
    if (role == Qt::DisplayRole)
        return QString::fromStdString(text::printable(table_.cellText(index.row(), index.column())));
    if (role == Qt::TextAlignmentRole) return alignmentOf(columns_[column].TextAlignment);
    if (role == Qt::ForegroundRole && table_.isInactive(index.row())) return quietText();
    if (index.row() == table_.markedRow()) return markOf(role);
    return {};
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const auto column = static_cast<std::size_t>(section);
    if (orientation != Qt::Horizontal || column >= columns_.size()) return {};
    if (role == Qt::DisplayRole) return QString::fromStdString(columns_[column].Caption);
    if (role == Qt::TextAlignmentRole) return alignmentOf(columns_[column].TextAlignment);
    return {};
}

}  // namespace FendaMaestros::qt
