#pragma once

#include <QProxyStyle>

namespace FendaMaestros::qt {

/// Flat fields, buttons, headers and frames with one thin line around them, drawn from the palette alone, so that light
/// and dark themes look alike. What has the focus, whatever it is, has a thicker line in the highlight colour. Texts
/// and lines stand out as platform/qt/Contrast.h says, also when the colours of the desktop do not.
class CalmStyle final : public QProxyStyle {
public:
    CalmStyle();

    QPalette standardPalette() const override;
    using QProxyStyle::polish;
    /// A desktop with colours of its own keeps them, as far as they can be read; one without gets the standard ones.
    void polish(QPalette& palette) override;
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

/// Around fields, buttons and frames under a theme.
QColor lineColor(const QPalette& palette);
/// Around what has the focus under a theme.
QColor focusColor(const QPalette& palette);
/// Paints the line around what has the focus, within `place`, in the same colour whatever it surrounds.
void drawFocusLine(QPainter& painter, const QRectF& place);

}  // namespace FendaMaestros::qt
