#include "platform/qt/Look.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <map>
#include <string_view>

#include "platform/qt/CalmStyle.h"
#include "platform/qt/Contrast.h"

namespace FendaMaestros::qt {

namespace {

constexpr Color white = 16777215;

QtMessageHandler previousHandler = nullptr;

/// A platform without a display cannot do all that a window asks of it, and says so at every turn.
void dropPlatformRemarks(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (text.startsWith("This plugin does not support")) return;
    if (previousHandler) previousHandler(type, context, text);
}

/// What the installed translation leaves out, such as the kinds of files in a file dialog, or says otherwise than
/// keyboards and the rest of the program.
class OwnWords final : public QTranslator {
public:
    using QTranslator::QTranslator;
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char*, int) const override {
        if (qstrcmp(context, "QShortcut") == 0 && qstrcmp(source, "Ctrl") == 0) return QStringLiteral("Ctrl");
        if (qstrcmp(context, "QAbstractFileIconProvider") != 0) return {};
        static const std::map<std::string_view, QString> spanish{{"Folder", "Carpeta"}, {"File Folder", "Carpeta"},
                                                                 {"File", "Archivo"},   {"%1 File", "Archivo %1"},
                                                                 {"Drive", "Unidad"},   {"Unknown", "Desconocido"}};
        const auto found = spanish.find(source);
        return found == spanish.end() ? QString() : found->second;
    }
};

}  // namespace

int pixels(Twips twips) { return twips / 15; }

QPalette fieldPalette(Color back, bool locked, bool enabled) {
    const QPalette theme = QApplication::palette();
    QPalette palette;
    if (!enabled) return palette;
    if (back != white && !locked) {
        const QColor shown(static_cast<int>(back & 0xFF), static_cast<int>(back >> 8 & 0xFF),
                           static_cast<int>(back >> 16 & 0xFF));
        palette.setColor(QPalette::Base, shown);
        palette.setColor(QPalette::Text, readable(theme.color(QPalette::Text), shown));
    } else if (locked) {
        palette.setColor(QPalette::Base, mixed(theme.color(QPalette::Base), theme.color(QPalette::Window), 0.7));
    }
    return palette;
}

void applyLook(QApplication& application) {
    if (!previousHandler) previousHandler = qInstallMessageHandler(dropPlatformRemarks);
    QApplication::setStyle(new CalmStyle);
    auto* spanish = new QTranslator(&application);
    if (spanish->load("qtbase_es", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(spanish);
    QApplication::installTranslator(new OwnWords(&application));
}

}  // namespace FendaMaestros::qt
