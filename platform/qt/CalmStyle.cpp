#include "platform/qt/CalmStyle.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QStyleOption>
#include <algorithm>

#include "platform/qt/Contrast.h"

namespace FendaMaestros::qt {

namespace {

constexpr qreal cornerRadius = 4;
constexpr int fieldHeight = 28;
constexpr int itemHeight = 24;
constexpr QSize leastButton(96, 30);
constexpr QSize airInButton(16, 0);

void drawPanel(QPainter& painter, const QStyleOption& option, const QBrush& fill) {
    const bool focused = (option.state & QStyle::State_HasFocus) && (option.state & QStyle::State_Enabled);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(lineColor(QApplication::palette()), 1));
    painter.setBrush(fill);
    painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), cornerRadius, cornerRadius);
    painter.restore();
    if (focused) drawFocusLine(painter, option.rect);
}

void drawButton(QPainter& painter, const QStyleOption& option) {
    const QColor face = option.palette.color(QPalette::Button);
    const QColor text = option.palette.color(QPalette::ButtonText);
    double shade = 0;
    if (option.state & QStyle::State_Sunken)
        shade = 0.16;
    else if (!(option.state & QStyle::State_Enabled))
        return drawPanel(painter, option, option.palette.color(QPalette::Window));
    else if (option.state & QStyle::State_MouseOver)
        shade = 0.07;
    drawPanel(painter, option, mixed(face, text, shade));
}

/// Around the text of a check or an option, with some air.
void drawFocus(QPainter& painter, const QStyleOption& option) {
    constexpr qreal air = 2;
    drawFocusLine(painter, QRectF(option.rect).adjusted(-air, 0, air, 0));
}

/// Around what scrolls.
void drawFrame(QPainter& painter, const QStyleOption& option) {
    painter.setPen(lineColor(option.palette));
    painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
    if (option.state & QStyle::State_HasFocus) drawFocusLine(painter, option.rect);
}

void drawHeader(QPainter& painter, const QStyleOption& option, bool parted) {
    const QColor window = option.palette.color(QPalette::Window);
    const QColor text = option.palette.color(QPalette::WindowText);
    const bool pressed = option.state & QStyle::State_Sunken;
    const QColor line = mixed(window, text, 0.24);
    const QRect& cell = option.rect;
    constexpr int gap = 6;
    painter.fillRect(cell, mixed(window, text, pressed ? 0.14 : 0.03));
    painter.fillRect(cell.left(), cell.bottom(), cell.width(), 1, line);
    if (parted) painter.fillRect(cell.right(), cell.top() + gap, 1, cell.height() - 2 * gap, line);
}

/// The box of a check or the circle of an option, filled with the highlight colour when it is on.
void drawIndicator(QPainter& painter, const QStyleOption& option, bool round) {
    const bool on = option.state & QStyle::State_On;
    const bool enabled = option.state & QStyle::State_Enabled;
    const QColor mark = enabled ? focusColor(option.palette) : option.palette.color(QPalette::WindowText);
    const QColor off = option.palette.color(enabled ? QPalette::Base : QPalette::Window);
    const QRectF box = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
    const qreal radius = round ? box.width() / 2 : 3;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(on ? mark : lineColor(option.palette));
    painter.setBrush(on ? mark : off);
    painter.drawRoundedRect(box, radius, radius);
    painter.translate(box.center());
    painter.scale(box.width() / 13, box.width() / 13);
    const QColor inside = standingOut(option.palette.color(QPalette::Base), {mark}, lineContrast);
    painter.setBrush(inside);
    painter.setPen(on && round ? Qt::NoPen : QPen(inside, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF tick[] = {{-3.4, 0.2}, {-1, 2.6}, {3.4, -2.6}};
    if (on && round) painter.drawEllipse(QPointF(), 2.4, 2.4);
    if (on && !round) painter.drawPolyline(tick, 3);
    painter.restore();
}

/// Room that the title of a frame takes above it.
int titleHeight(const QStyleOptionGroupBox& frame) {
    constexpr int air = 5;
    return frame.text.isEmpty() ? 0 : frame.fontMetrics.height() + air;
}

void drawChevron(QPainter& painter, const QRect& place, const QColor& color) {
    const QPointF center = QRectF(place).center();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    const QPointF chevron[] = {center + QPointF(-3.5, -1.5), center + QPointF(0, 2), center + QPointF(3.5, -1.5)};
    painter.drawPolyline(chevron, 3);
    painter.restore();
}

/// The sign of a message and its colour.
struct Sign {
    QString letter;
    QColor color;
};

Sign signOf(QStyle::StandardPixmap icon) {
    switch (icon) {
        case QStyle::SP_MessageBoxQuestion:
            return {"?", QColor(37, 99, 175)};
        case QStyle::SP_MessageBoxInformation:
            return {"i", QColor(37, 99, 175)};
        case QStyle::SP_MessageBoxWarning:
            return {"!", QColor(202, 118, 12)};
        case QStyle::SP_MessageBoxCritical:
            return {"×", QColor(192, 45, 45)};
        default:
            return {};
    }
}

QIcon drawSign(const Sign& sign) {
    constexpr int size = 128;
    QPixmap picture(size, size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(sign.color);
    painter.drawEllipse(picture.rect().adjusted(8, 8, -8, -8));
    QFont font = painter.font();
    font.setPixelSize(size * 5 / 8);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(picture.rect(), Qt::AlignCenter, sign.letter);
    return picture;
}

/// The handle of a scroll bar in its groove; the bar has no arrows.
QRect scrollHandle(const QStyleOptionSlider& bar) {
    constexpr int shortest = 28;
    const bool upright = bar.orientation == Qt::Vertical;
    const int length = upright ? bar.rect.height() : bar.rect.width();
    const int range = bar.maximum - bar.minimum;
    const qint64 share = qint64{length} * bar.pageStep / std::max(range + bar.pageStep, 1);
    const int handle = std::clamp(static_cast<int>(share), std::min(shortest, length), length);
    const int start =
        QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition, length - handle, bar.upsideDown);
    return upright ? QRect(0, start, bar.rect.width(), handle) : QRect(start, 0, handle, bar.rect.height());
}

QRect scrollBarPart(const QStyleOptionSlider& bar, QStyle::SubControl part) {
    const QRect handle = scrollHandle(bar);
    const bool upright = bar.orientation == Qt::Vertical;
    switch (part) {
        case QStyle::SC_ScrollBarSlider:
            return handle;
        case QStyle::SC_ScrollBarGroove:
            return bar.rect;
        case QStyle::SC_ScrollBarSubPage:
            return upright ? QRect(0, 0, handle.width(), handle.top()) : QRect(0, 0, handle.left(), handle.height());
        case QStyle::SC_ScrollBarAddPage:
            return upright ? bar.rect.adjusted(0, handle.bottom() + 1, 0, 0)
                           : bar.rect.adjusted(handle.right() + 1, 0, 0, 0);
        default:
            return {};
    }
}

void drawScrollBar(QPainter& painter, const QStyleOptionSlider& bar) {
    constexpr qreal air = 3;
    const QColor window = bar.palette.color(QPalette::Window);
    const bool held = bar.state & (QStyle::State_Sunken | QStyle::State_MouseOver);
    const QRectF handle = QRectF(scrollHandle(bar)).adjusted(air, air, -air, -air);
    const qreal radius = std::min(handle.width(), handle.height()) / 2;
    painter.save();
    painter.fillRect(bar.rect, mixed(window, bar.palette.color(QPalette::Base), 0.5));
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(standingOut(mixed(window, bar.palette.color(QPalette::WindowText), held ? 0.6 : 0.28),
                                 {window, bar.palette.color(QPalette::Base)}, lineContrast));
    if (bar.maximum > bar.minimum) painter.drawRoundedRect(handle, radius, radius);
    painter.restore();
}

void drawGroove(QPainter& painter, const QStyleOption& option) {
    drawPanel(painter, option, option.palette.brush(QPalette::Base));
}

/// The share that is done, within the line around the groove.
void drawProgress(QPainter& painter, const QStyleOptionProgressBar& bar) {
    const QRectF groove = QRectF(bar.rect).adjusted(1, 1, -1, -1);
    const double share = (bar.progress - bar.minimum) / static_cast<double>(std::max(bar.maximum - bar.minimum, 1));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(mixed(bar.palette.color(QPalette::Base), bar.palette.color(QPalette::Highlight), 0.35));
    painter.drawRoundedRect(QRectF(groove.topLeft(), QSizeF(groove.width() * share, groove.height())), cornerRadius - 1,
                            cornerRadius - 1);
    painter.restore();
}

}  // namespace

QColor lineColor(const QPalette& palette) {
    const QColor window = palette.color(QPalette::Window);
    const QColor quiet = mixed(window, palette.color(QPalette::Active, QPalette::WindowText), 0.24);
    return standingOut(quiet, {window, palette.color(QPalette::Base)}, lineContrast);
}

QColor focusColor(const QPalette& palette) {
    const QPalette::ColorGroup in = QPalette::Active;
    return standingOut(palette.color(in, QPalette::Highlight),
                       {palette.color(in, QPalette::Window), palette.color(in, QPalette::Base)}, lineContrast);
}

void drawFocusLine(QPainter& painter, const QRectF& place) {
    constexpr qreal width = 2;
    constexpr qreal inset = width / 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(focusColor(QApplication::palette()), width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(place.adjusted(inset, inset, -inset, -inset), cornerRadius, cornerRadius);
    painter.restore();
}

CalmStyle::CalmStyle() : QProxyStyle("Fusion") {}

QPalette CalmStyle::standardPalette() const {
    QPalette palette = QProxyStyle::standardPalette();
    const QColor ink(31, 35, 40);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, ink);
        palette.setColor(QPalette::Disabled, role, QColor(118, 123, 130));
    }
    palette.setColor(QPalette::Window, QColor(243, 244, 246));
    palette.setColor(QPalette::Base, Qt::white);
    palette.setColor(QPalette::Disabled, QPalette::Base, QColor(243, 244, 246));
    palette.setColor(QPalette::AlternateBase, QColor(247, 248, 250));
    palette.setColor(QPalette::Button, QColor(253, 253, 254));
    palette.setColor(QPalette::Highlight, QColor(37, 99, 175));
    palette.setColor(QPalette::Inactive, QPalette::Highlight, QColor(37, 99, 175));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    return palette;
}

/// A row that is current in a table out of use is marked quietly.
void CalmStyle::polish(QPalette& palette) {
    const bool bare = palette.window() == baseStyle()->standardPalette().window();
    if (bare) palette = standardPalette();
    palette.setColor(QPalette::Disabled, QPalette::Highlight,
                     mixed(palette.color(QPalette::Base), palette.color(QPalette::Text), 0.16));
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, palette.color(QPalette::Text));
    struct Pair {
        QPalette::ColorRole text, back;
    };
    constexpr Pair pairs[] = {
        {QPalette::WindowText, QPalette::Window},         {QPalette::Text, QPalette::Base},
        {QPalette::Text, QPalette::AlternateBase},        {QPalette::Text, QPalette::Window},
        {QPalette::ButtonText, QPalette::Button},         {QPalette::ButtonText, QPalette::Window},
        {QPalette::HighlightedText, QPalette::Highlight}, {QPalette::ToolTipText, QPalette::ToolTipBase}};
    for (const auto& [text, back] : pairs) {
        for (const auto group : {QPalette::Active, QPalette::Inactive})
            palette.setColor(group, text, readable(palette.color(group, text), palette.color(group, back)));
        const QPalette::ColorGroup off = QPalette::Disabled;
        palette.setColor(off, text, standingOut(palette.color(off, text), {palette.color(off, back)}, lineContrast));
    }
}

void CalmStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    switch (element) {
        case PE_PanelLineEdit: {
            const auto* frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
            if (!frame || frame->lineWidth <= 0) break;
            return drawPanel(*painter, *option, option->palette.brush(QPalette::Base));
        }
        case PE_FrameGroupBox:
            return drawPanel(*painter, *option, Qt::NoBrush);
        case PE_PanelButtonCommand:
            return drawButton(*painter, *option);
        case PE_FrameFocusRect:
            if (!qobject_cast<const QPushButton*>(widget)) drawFocus(*painter, *option);
            return;
        case PE_IndicatorCheckBox:
            return drawIndicator(*painter, *option, false);
        case PE_IndicatorRadioButton:
            return drawIndicator(*painter, *option, true);
        case PE_Frame:
            return drawFrame(*painter, *option);
        default:
            break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void CalmStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    if (element == CE_HeaderEmptyArea) return drawHeader(*painter, *option, false);
    if (element == CE_HeaderSection) {
        const auto* header = qstyleoption_cast<const QStyleOptionHeader*>(option);
        const bool last = header && (header->position == QStyleOptionHeader::End ||
                                     header->position == QStyleOptionHeader::OnlyOneSection);
        return drawHeader(*painter, *option, !last);
    }
    const auto* bar = qstyleoption_cast<const QStyleOptionProgressBar*>(option);
    if (element == CE_ProgressBarGroove) return drawGroove(*painter, *option);
    if (element == CE_ProgressBarContents && bar) return drawProgress(*painter, *bar);
    if (element == CE_ProgressBarLabel && bar)
        return drawItemText(painter, bar->rect, Qt::AlignCenter, bar->palette, true, bar->text, QPalette::Text);
    QProxyStyle::drawControl(element, option, painter, widget);
}

void CalmStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                   const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && bar) return drawScrollBar(*painter, *bar);
    const auto* combo = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (control != CC_ComboBox || !combo || combo->editable)
        return QProxyStyle::drawComplexControl(control, option, painter, widget);
    const bool enabled = option->state & State_Enabled;
    drawPanel(*painter, *option, option->palette.color(enabled ? QPalette::Base : QPalette::Window));
    const QRect arrow = subControlRect(CC_ComboBox, option, SC_ComboBoxArrow, widget);
    drawChevron(*painter, arrow, option->palette.color(QPalette::Text));
}

QRect CalmStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                const QWidget* widget) const {
    const auto* bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && bar) return scrollBarPart(*bar, part);
    const auto* frame = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
    if (control != CC_GroupBox || !frame) return QProxyStyle::subControlRect(control, option, part, widget);
    if (part == SC_GroupBoxFrame || part == SC_GroupBoxContents)
        return option->rect.adjusted(0, titleHeight(*frame), 0, 0);
    constexpr int indent = 2;
    return {indent, 0, option->rect.width() - indent, frame->fontMetrics.height()};
}

int CalmStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
        case PM_LayoutLeftMargin:
        case PM_LayoutTopMargin:
        case PM_LayoutRightMargin:
        case PM_LayoutBottomMargin:
            return 14;
        case PM_LayoutHorizontalSpacing:
        case PM_LayoutVerticalSpacing:
            return 9;
        case PM_HeaderMargin:
            return 6;
        case PM_FocusFrameHMargin:
            return 5;
        case PM_DefaultFrameWidth:
            // The line of the focus goes around what scrolls, not over it.
            return qobject_cast<const QAbstractScrollArea*>(widget) ? 2
                                                                    : QProxyStyle::pixelMetric(metric, option, widget);
        case PM_ButtonShiftHorizontal:
        case PM_ButtonShiftVertical:
            return 0;
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

QSize CalmStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                  const QWidget* widget) const {
    const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
    if (type == CT_PushButton) return (size + airInButton).expandedTo(leastButton);
    if (type == CT_LineEdit || type == CT_ComboBox) return size.expandedTo({0, fieldHeight});
    if (type == CT_ItemViewItem) return size.expandedTo({0, itemHeight});
    return size;
}

QIcon CalmStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    const Sign sign = signOf(icon);
    return sign.letter.isEmpty() ? QProxyStyle::standardIcon(icon, option, widget) : drawSign(sign);
}

int CalmStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* result) const {
    // The letters that press a command are always underlined.
    if (hint == SH_UnderlineShortcut) return 1;
    if (hint == SH_ComboBox_Popup) return 0;
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(hint, option, widget, result);
}

}  // namespace FendaMaestros::qt
