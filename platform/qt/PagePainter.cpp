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

}  // namespace

void paintPage(QPainter& painter, const Page& page) {
    constexpr int lineWidth = 15;
    painter.setPen(QPen(Qt::black, lineWidth));
    for (const PageText& text : page.texts) {
        const QRect box(text.left, text.top, text.width, text.height);
        painter.save();
        painter.setClipRect(box, Qt::IntersectClip);
        painter.setFont(fontOf(text));
        painter.drawText(box, static_cast<int>(alignmentOf(text.alignment) | Qt::AlignTop) | Qt::TextSingleLine,
                         QString::fromStdString(text.text));
        painter.restore();
    }
    for (const PageLine& line : page.lines) painter.drawLine(line.left, line.top, line.left + line.width, line.top);
}

}  // namespace FendaMaestros::qt
