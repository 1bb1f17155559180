#include "app/window/Tile.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <cstdlib>
#include <limits>

#include "platform/qt/CalmStyle.h"
#include "platform/qt/Contrast.h"

namespace FendaMaestros {

namespace {

constexpr int margin = 14;
/// Between tiles.
constexpr int besides = 12;
constexpr int below = 8;
constexpr int mostColumns = 3;
constexpr int leastWidth = 230;
constexpr int usualWidth = 306;

/// The key as manuals write it.
QString shortened(const QKeySequence& key) {
    return key.toString(QKeySequence::NativeText).replace(QStringLiteral("Mayúsculas"), QStringLiteral("Mayús"));
}

}  // namespace

Tile::Tile(const QString& text, const QKeySequence& key, QWidget* parent)
    : QAbstractButton(parent), keyText_(shortened(key)) {
    setText(text);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Maximum);
    setAccessibleName(text);
    setAccessibleDescription(keyText_);
}

QSize Tile::sizeHint() const { return {usualWidth, fontMetrics().height() + 2 * margin + 8}; }

QSize Tile::minimumSizeHint() const {
    constexpr int air = 12;
    return {leastWidth, fontMetrics().height() + air};
}

void Tile::paintEvent(QPaintEvent*) {
    const QPalette& colours = palette();
    const QColor base = colours.color(QPalette::Base), ink = colours.color(QPalette::Text);
    const double emphasis = isDown() ? 0.30 : hasFocus() ? 0.16 : underMouse() ? 0.08 : 0.0;
    const QColor face = qt::mixed(base, colours.color(QPalette::Highlight), emphasis);
    constexpr qreal corner = 4;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(face);
    painter.setPen(qt::lineColor(colours));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), corner, corner);
    if (hasFocus()) qt::drawFocusLine(painter, rect());

    const QFontMetrics metrics = fontMetrics();
    const QRect inside = rect().adjusted(margin, 0, -margin, 0);
    const int forText = inside.width() - metrics.horizontalAdvance(keyText_) - margin;
    painter.setPen(qt::standingOut(ink, {face}, qt::textContrast));
    painter.drawText(inside, Qt::AlignVCenter | Qt::AlignLeft, metrics.elidedText(text(), Qt::ElideRight, forText));
    painter.setPen(qt::standingOut(qt::mixed(ink, base, 0.35), {face}, qt::textContrast));
    painter.drawText(inside, Qt::AlignVCenter | Qt::AlignRight, keyText_);
}

void Tile::keyPressEvent(QKeyEvent* event) {
    const auto go = [](Tile* tile) {
        if (tile) tile->setFocus(Qt::TabFocusReason);
    };
    switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
            if (!event->isAutoRepeat()) click();
            return;
        case Qt::Key_Left:
            return go(neighbour(-1, 0));
        case Qt::Key_Right:
            return go(neighbour(1, 0));
        case Qt::Key_Up:
            return go(neighbour(0, -1));
        case Qt::Key_Down:
            return go(neighbour(0, 1));
        default:
            QAbstractButton::keyPressEvent(event);
    }
}

Tile* Tile::neighbour(int right, int down) const {
    Tile* nearest = nullptr;
    int least = std::numeric_limits<int>::max();
    for (QObject* sibling : parent()->children()) {
        auto* const tile = dynamic_cast<Tile*>(sibling);
        if (!tile) continue;
        const QPoint way = tile->geometry().center() - geometry().center();
        const int ahead = way.x() * right + way.y() * down;
        const int aside = std::abs(way.x() * down) + std::abs(way.y() * right);
        // A tile of the same row or column comes before one that is nearer but aside.
        if (ahead > 0 && ahead + 4 * aside < least) {
            least = ahead + 4 * aside;
            nearest = tile;
        }
    }
    return nearest;
}

TileBoard::TileBoard(QWidget* parent) : QWidget(parent), grid_(*new QGridLayout(this)) {
    grid_.setContentsMargins(0, 0, 0, 0);
    grid_.setHorizontalSpacing(besides);
    grid_.setVerticalSpacing(below);
}

void TileBoard::addHeading(QWidget& heading) {
    heading.setContentsMargins(0, besides, 0, 0);
    groups_.push_back({&heading, {}});
    place(mostColumns);
}

void TileBoard::addTile(Tile& tile) {
    groups_.back().tiles.push_back(&tile);
    place(mostColumns);
}

QSize TileBoard::minimumSizeHint() const { return {leastWidth, QWidget::minimumSizeHint().height()}; }

void TileBoard::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    const int columns = std::clamp((width() + besides) / (leastWidth + besides), 1, mostColumns);
    if (columns != columns_) place(columns);
}

void TileBoard::place(int columns) {
    columns_ = columns;
    for (int column = 0; column < mostColumns; ++column) grid_.setColumnStretch(column, column < columns ? 1 : 0);
    int row = 0;
    for (const Group& group : groups_) {
        grid_.addWidget(group.heading, row++, 0, 1, columns);
        int column = 0;
        for (Tile* const tile : group.tiles) {
            grid_.addWidget(tile, row, column);
            if (++column == columns) ++row, column = 0;
        }
        if (column > 0) ++row;
    }
}

}  // namespace FendaMaestros
