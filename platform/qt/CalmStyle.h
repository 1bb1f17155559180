#pragma once

#include <QProxyStyle>

namespace FendaMaestros::qt {

/// Flat fields, buttons, headers and frames with one thin line around them, drawn from the palette alone, so that light
/// and dark themes look alike. What has the focus carries the highlight colour.
class CalmStyle final : public QProxyStyle {
public:
    CalmStyle();

    QPalette standardPalette() const override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override;
    QIcon standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override;
};

/// `shareOfB` from 0, which gives `a`, to 1.
QColor mixed(const QColor& a, const QColor& b, double shareOfB);

}  // namespace FendaMaestros::qt
