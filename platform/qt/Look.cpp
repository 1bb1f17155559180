#include "platform/qt/Look.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QStyleFactory>
#include <QTranslator>

namespace FendaMaestros::qt {

namespace {

constexpr Color white = 16777215;

QColor mixed(const QColor& a, const QColor& b, double shareOfB) {
    const auto part = [&](int first, int second) { return static_cast<int>(first + (second - first) * shareOfB); };
    return {part(a.red(), b.red()), part(a.green(), b.green()), part(a.blue(), b.blue())};
}

QColor textOn(const QColor& back) {
    constexpr int bright = 140;
    return qGray(back.rgb()) >= bright ? QColor(24, 24, 24) : QColor(245, 245, 245);
}

}  // namespace

int pixels(Twips twips) { return twips / 15; }

QPalette fieldPalette(Color back, bool locked) {
    const QPalette theme = QApplication::palette();
    QPalette palette;
    if (back != white) {
        const QColor shown(static_cast<int>(back & 0xFF), static_cast<int>(back >> 8 & 0xFF),
                           static_cast<int>(back >> 16 & 0xFF));
        palette.setColor(QPalette::Base, shown);
        palette.setColor(QPalette::Text, textOn(shown));
    } else if (locked) {
        palette.setColor(QPalette::Base, mixed(theme.color(QPalette::Base), theme.color(QPalette::Window), 0.7));
    }
    return palette;
}

void applyLook(QApplication& application) {
    QApplication::setStyle(QStyleFactory::create("Fusion"));
    auto* spanish = new QTranslator(&application);
    if (spanish->load("qtbase_es", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(spanish);
}

}  // namespace FendaMaestros::qt
