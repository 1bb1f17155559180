#include "platform/qt/Contrast.h"

#include <algorithm>
#include <cmath>

namespace FendaMaestros::qt {

namespace {

double luminance(const QColor& color) {
    const auto part = [](double value) {
        return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
}

}  // namespace

double contrast(const QColor& a, const QColor& b) {
    constexpr double flare = 0.05;
    const auto [darker, brighter] = std::minmax({luminance(a), luminance(b)});
    return (brighter + flare) / (darker + flare);
}

QColor standingOut(const QColor& color, std::initializer_list<QColor> backs, double ratio) {
    constexpr double step = 0.04;
    const QColor& first = *backs.begin();
    const QColor end = contrast(first, Qt::black) > contrast(first, Qt::white) ? Qt::black : Qt::white;
    const auto standsOut = [&](const QColor& tried) {
        return std::ranges::all_of(backs, [&](const QColor& back) { return contrast(tried, back) >= ratio; });
    };
    double share = 0;
    QColor shown = color;
    while (!standsOut(shown) && share < 1) shown = mixed(color, end, share = std::min(share + step, 1.0));
    return shown;
}

QColor readable(const QColor& color, const QColor& back) {
    if (contrast(color, back) >= textContrast) return color;
    const QColor dark(24, 24, 24), bright(245, 245, 245);
    return contrast(back, dark) > contrast(back, bright) ? dark : bright;
}

QColor mixed(const QColor& a, const QColor& b, double shareOfB) {
    const auto part = [&](int first, int second) { return static_cast<int>(first + (second - first) * shareOfB); };
    return {part(a.red(), b.red()), part(a.green(), b.green()), part(a.blue(), b.blue())};
}

}  // namespace FendaMaestros::qt
