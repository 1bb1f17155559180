#include "platform/qt/WrapLayout.h"

#include <QApplication>
#include <QStyle>
#include <QWidget>
#include <algorithm>
#include <numeric>

namespace FendaMaestros::qt {

WrapLayout::WrapLayout(Side side) : side_(side) {
    setContentsMargins({});
    setSpacing(QApplication::style()->pixelMetric(QStyle::PM_LayoutHorizontalSpacing));
}

WrapLayout::~WrapLayout() {
    while (const QLayoutItem* item = takeAt(0)) delete item;
}

void WrapLayout::add(QLayoutItem* item, bool wide) {
    if (item->layout()) addChildLayout(item->layout());
    items_.push_back({item, wide});
}

QLayoutItem* WrapLayout::itemAt(int index) const {
    return index >= 0 && index < count() ? items_[static_cast<std::size_t>(index)].item : nullptr;
}

QLayoutItem* WrapLayout::takeAt(int index) {
    QLayoutItem* const item = itemAt(index);
    if (item) items_.erase(items_.begin() + index);
    return item;
}

int WrapLayout::Item::least() const {
    return wide ? item->minimumSize().width() : std::max(item->sizeHint().width(), item->minimumSize().width());
}

int WrapLayout::Item::heightFor(int width) const {
    return item->hasHeightForWidth() ? item->heightForWidth(width) : item->sizeHint().height();
}

/// A command that is hidden now finds its room when it comes.
QSize WrapLayout::sizeHint() const {
    QSize size;
    for (const Item& each : items_) {
        const QWidget* const widget = each.item->widget();
        if (each.item->isEmpty() && !widget) continue;
        const QSize wanted = widget ? widget->sizeHint().expandedTo(widget->minimumSize()) : each.item->sizeHint();
        size = {size.width() + (size.width() ? spacing() : 0) + std::max(common_, wanted.width()),
                std::max(size.height(), wanted.height())};
    }
    return size.grownBy(contentsMargins());
}

QSize WrapLayout::minimumSize() const {
    QSize size;
    for (const Item& each : items_)
        if (!each.item->isEmpty()) size = size.expandedTo(each.item->minimumSize());
    return size.grownBy(contentsMargins());
}

QRect WrapLayout::inside(const QRect& place) const { return place.marginsRemoved(contentsMargins()); }

int WrapLayout::heightForWidth(int width) const {
    return heightOf(lines(inside({0, 0, width, 0}).width())) + contentsMargins().top() + contentsMargins().bottom();
}

int WrapLayout::heightOf(const std::vector<Line>& lines) const {
    int height = 0;
    for (const Line& line : lines) height += (height ? spacing() : 0) + line.height;
    return height;
}

std::vector<WrapLayout::Line> WrapLayout::lines(int width) const {
    std::vector<Line> alike = broken(width, common_);
    std::vector<Line> narrow = broken(width, 0);
    return narrow.size() < alike.size() ? narrow : alike;
}

std::vector<WrapLayout::Line> WrapLayout::broken(int width, int common) const {
    std::vector<Line> lines;
    int used = 0;
    for (const Item& each : items_) {
        if (each.item->isEmpty()) continue;
        const int wanted = std::min(std::max(common, each.least()), width);
        const bool fits = !lines.empty() && used + spacing() + wanted <= width;
        if (!fits) lines.emplace_back();
        used = fits ? used + spacing() + wanted : wanted;
        lines.back().items.push_back(&each);
        lines.back().widths.push_back(wanted);
    }
    for (Line& line : lines) spread(line, width);
    return lines;
}

void WrapLayout::spread(Line& line, int width) const {
    line.width = std::accumulate(line.widths.begin(), line.widths.end(), 0) +
                 spacing() * (static_cast<int>(line.items.size()) - 1);
    auto wide = static_cast<int>(std::ranges::count_if(line.items, &Item::wide));
    for (std::size_t at = 0; at < line.items.size(); ++at) {
        if (line.items[at]->wide) {
            const int more = (width - line.width) / wide--;
            line.widths[at] += more;
            line.width += more;
        }
        line.height = std::max(line.height, line.items[at]->heightFor(line.widths[at]));
    }
}

void WrapLayout::setGeometry(const QRect& place) {
    QLayout::setGeometry(place);
    const QRect room = inside(place);
    const std::vector<Line> lines = this->lines(room.width());
    int top = room.top() + std::max(0, room.height() - heightOf(lines)) / 2;
    for (const Line& line : lines) {
        int left = side_ == Side::Left ? room.left() : room.right() + 1 - line.width;
        for (std::size_t at = 0; at < line.items.size(); ++at) {
            line.items[at]->item->setGeometry({left, top, line.widths[at], line.height});
            left += line.widths[at] + spacing();
        }
        top += line.height + spacing();
    }
}

}  // namespace FendaMaestros::qt
