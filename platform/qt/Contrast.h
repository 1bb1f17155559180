#pragma once

#include <QColor>
#include <initializer_list>

namespace FendaMaestros::qt {

/// Ratios of luminance below which a text, and a line or a text that is out of use, is hard to see.
inline constexpr double textContrast = 4.5;
inline constexpr double lineContrast = 3;

/// The ratio of luminance of two colours, from 1, when they are as bright as each other, to 21.
double contrast(const QColor& a, const QColor& b);

/// `color`, or as near to it as stands out by this ratio from each of `backs`, which are about as bright as each other.
QColor standingOut(const QColor& color, std::initializer_list<QColor> backs, double ratio);

/// `color`, or what is read best on `back`, when it is a text that could hardly be read there.
QColor readable(const QColor& color, const QColor& back);

/// `shareOfB` from 0, which gives `a`, to 1.
QColor mixed(const QColor& a, const QColor& b, double shareOfB);

}  // namespace FendaMaestros::qt
