#include "app/window/Tile.h"

#include <QKeyEvent>
#include <QPainter>
#include <cstdlib>
#include <limits>

namespace FendaMaestros {

namespace {

constexpr int margin = 14;

QColor blend(const QColor& a, const QColor& b, double share) {
    const auto mix = [share](int from, int to) { return static_cast<int>(from + (to - from) * share); };
    return {mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue())};
}

}  // namespace

Tile::Tile(const QString& text, const QKeySequence& key, QWidget* parent)
    : QAbstractButton(parent), keyText_(key.toString(QKeySequence::NativeText)) {
    setText(text);
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setAccessibleName(text);
    setAccessibleDescription(keyText_);
}

QSize Tile::sizeHint() const {
    const QFontMetrics metrics = fontMetrics();
    const int width = metrics.horizontalAdvance(text()) + metrics.horizontalAdvance(keyText_) + 4 * margin;
    return {std::max(width, 240), metrics.height() + 2 * margin + 8};
}

void Tile::paintEvent(QPaintEvent*) {
    const QPalette& colours = palette();
    const QColor accent = colours.color(QPalette::Highlight);
    const double emphasis = isDown() ? 0.30 : hasFocus() ? 0.16 : underMouse() ? 0.08 : 0.0;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(blend(colours.color(QPalette::Base), accent, emphasis));
    const QColor outline = blend(colours.color(QPalette::Base), colours.color(QPalette::Text), 0.25);
    painter.setPen(hasFocus() ? QPen(accent, 2) : QPen(outline, 1));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 8, 8);

    const QRect inside = rect().adjusted(margin, 0, -margin, 0);
    painter.setPen(colours.color(QPalette::Text));
    painter.drawText(inside, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextHideMnemonic, text());
    painter.setPen(blend(colours.color(QPalette::Text), colours.color(QPalette::Base), 0.35));
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

}  // namespace FendaMaestros
