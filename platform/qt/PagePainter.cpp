#include "platform/qt/PagePainter.h"

#include <QPainter>

#include "toolkit/Document.h"

namespace FendaMaestros::qt {

namespace {

constexpr int twipsPerPoint = 20;

Qt::Alignment alignmentOf(Alignment alignment) {
    if (alignment == Alignment::Right) return Qt::AlignRight;
    return alignment == Alignment::Center ? Qt::AlignHCenter : Qt::AlignLeft;
}

QFont fontOf(const PageText& text) {
    QFont font(QString::fromStdString(text.font));
    font.setPixelSize(text.points * twipsPerPoint);
    font.setBold(text.bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

int flagsOf(const PageText& text) {
    return static_cast<int>(alignmentOf(text.alignment) | Qt::AlignTop) |
           (text.whole ? Qt::TextWordWrap : Qt::TextSingleLine);
}

/// Smaller by half points until the text, wrapped, is within its box.
void shrinkToFit(QFont& font, const PageText& text, const QRect& box) {
    constexpr int step = twipsPerPoint / 2;
    const QString shown = QString::fromStdString(text.text);
    const auto fits = [&] {
        const QRectF taken = QFontMetricsF(font).boundingRect(box, flagsOf(text), shown);
        return taken.width() <= box.width() && taken.height() <= box.height();
    };
    while (!fits() && font.pixelSize() > step) font.setPixelSize(font.pixelSize() - step);
}

}  // namespace

void paintPage(QPainter& painter, const Page& page) {
    constexpr int lineWidth = 15;
    painter.setPen(QPen(Qt::black, lineWidth));
    for (const PageText& text : page.texts) {
        const QRect box(text.left, text.top, text.width, text.height);
        painter.save();
        painter.setClipRect(box, Qt::IntersectClip);
        QFont font = fontOf(text);
        if (text.whole) shrinkToFit(font, text, box);
        painter.setFont(font);
        painter.drawText(box, flagsOf(text), QString::fromStdString(text.text));
        painter.restore();
    }
    for (const PageLine& line : page.lines) painter.drawLine(line.left, line.top, line.left + line.width, line.top);
}

}  // namespace FendaMaestros::qt
