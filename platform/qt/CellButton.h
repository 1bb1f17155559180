#pragma once

#include <QStyledItemDelegate>
#include <functional>

namespace FendaMaestros::qt {

/// Paints a button at the right end of some cells and tells when it is clicked.
class CellButton final : public QStyledItemDelegate {
public:
    /// Of a button, in pixels.
    static constexpr int widest = 28;

    using ShownIn = std::function<bool(int row, int column)>;

    CellButton(QObject* parent, ShownIn shownIn, std::function<void(int column)> clicked)
        : QStyledItemDelegate(parent), shownIn_(std::move(shownIn)), clicked_(std::move(clicked)) {}

    /// Where the button is in a cell.
    static QRect place(const QRect& cell);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool editorEvent(QEvent* event, QAbstractItemModel* model, const QStyleOptionViewItem& option,
                     const QModelIndex& index) override;

private:
    ShownIn shownIn_;
    std::function<void(int column)> clicked_;
};

}  // namespace FendaMaestros::qt
