#include "platform/qt/CellButton.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPainter>

namespace FendaMaestros::qt {

QRect CellButton::place(const QRect& cell) {
    const int width = std::min(widest, cell.width());
    return QRect(cell.right() - width + 1, cell.top(), width, cell.height()).adjusted(1, 1, -1, -1);
}

void CellButton::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QStyleOptionViewItem cell = option;
    // The whole row is current: no single cell is marked.
    cell.state &= ~QStyle::State_HasFocus;
    QStyledItemDelegate::paint(painter, cell, index);
    if (!shownIn_(index.row(), index.column())) return;

    QStyleOptionButton button;
    button.rect = place(option.rect);
    button.text = QStringLiteral("…");
    button.state = QStyle::State_Enabled | QStyle::State_Raised;
    button.palette = option.palette;
    QApplication::style()->drawControl(QStyle::CE_PushButton, &button, painter);
}

bool CellButton::editorEvent(QEvent* event, QAbstractItemModel*, const QStyleOptionViewItem& option,
                             const QModelIndex& index) {
    if (event->type() != QEvent::MouseButtonRelease || !shownIn_(index.row(), index.column())) return false;
    if (!place(option.rect).contains(static_cast<QMouseEvent*>(event)->position().toPoint())) return false;
    clicked_(index.column());
    return true;
}

}  // namespace FendaMaestros::qt
