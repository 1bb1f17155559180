#include "platform/qt/Pdf.h"

#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <stdexcept>

#include "platform/qt/PagePainter.h"
#include "toolkit/Document.h"

namespace FendaMaestros {

namespace {

constexpr int twipsPerInch = 1440;

/// Fonts need an application; a program without windows gets one that asks for no display.
void ensureApplication() {
    if (QCoreApplication::instance()) return;
    static int argc = 1;
    static char name[] = "fenda";
    static char* argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static const QGuiApplication application(argc, argv);
}

[[noreturn]] void fail(const std::string& path, const QString& reason) {
    throw std::runtime_error("No se puede escribir el fichero " + path + ": " + reason.toStdString());
}

void paintPages(QPdfWriter& writer, const PagedDocument& document, const std::string& path) {
    QPainter painter;
    if (!painter.begin(&writer)) fail(path, "no se puede empezar el documento.");
    for (int index = 0; index < document.pageCount(); ++index) {
        if (index > 0) writer.newPage();
        qt::paintPage(painter, document.page(index));
    }
}

}  // namespace

void writePdf(const PagedDocument& document, const std::string& path) {
    ensureApplication();
    QSaveFile file(QString::fromStdString(path));
    if (!file.open(QIODevice::WriteOnly)) fail(path, file.errorString());
    {
        QPdfWriter writer(&file);
        writer.setTitle(QString::fromStdString(document.title()));
        writer.setCreator("FendaMaestros");
        writer.setResolution(twipsPerInch);
        constexpr double twipsPerPoint = 20;
        writer.setPageSize(
            QPageSize(QSizeF(document.pageWidth() / twipsPerPoint, document.pageHeight() / twipsPerPoint),
                      QPageSize::Point, {}, QPageSize::ExactMatch));
        writer.setPageMargins(QMarginsF());
        paintPages(writer, document, path);
    }
    if (!file.commit()) fail(path, file.errorString());
}

}  // namespace FendaMaestros
