#include "platform/qt/Pdf.h"

#include <QBuffer>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <cerrno>
#include <stdexcept>

#include "platform/qt/PagePainter.h"
#include "platform/qt/Silence.h"
#include "toolkit/Document.h"
#include "ui/FileErrorText.h"

namespace FendaMaestros {

namespace {

constexpr int twipsPerInch = 1440;
constexpr double twipsPerPoint = 20;

/// Fonts need an application; a program without windows gets one that asks for no display.
void ensureApplication() {
    if (QCoreApplication::instance()) return;
    static int argc = 1;
    static char name[] = "fenda";
    static char* argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const qt::Silence silence;
    static const QGuiApplication application(argc, argv);
}

[[noreturn]] void fail(const std::string& path, const std::string& reason) {
    throw std::runtime_error("No se puede escribir el fichero " + path + ": " + reason + ".");
}

/// Carries out a step of writing the file. The file object tells why it failed in words of its own; the system's number
/// is still there.
template <class Step>
void carryOut(const std::string& path, Step&& step) {
    errno = 0;
    if (step()) return;
    const int reason = errno;
    fail(path, fileErrorText({reason ? reason : EIO, std::generic_category()}));
}

QByteArray makePdf(const PagedDocument& document) {
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(QString::fromStdString(document.title()));
    writer.setCreator("FendaMaestros");
    writer.setResolution(twipsPerInch);
    const QSizeF points(document.pageWidth() / twipsPerPoint, document.pageHeight() / twipsPerPoint);
    writer.setPageSize(QPageSize(points, QPageSize::Point, {}, QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());

    QPainter painter(&writer);
    for (int index = 0; index < document.pageCount(); ++index) {
        if (index > 0) writer.newPage();
        qt::paintPage(painter, document.page(index));
    }
    painter.end();
    return buffer.data();
}

}  // namespace

/// Whole in memory first: the engine that makes the file does not tell when a write fails.
void writePdf(const PagedDocument& document, const std::string& path) {
    ensureApplication();
    const QFileInfo there(QString::fromStdString(path));
    if (there.exists() && !there.isFile()) fail(path, "no es un fichero normal");
    QSaveFile file(there.filePath());
    carryOut(path, [&] { return file.open(QIODevice::WriteOnly); });
    const QByteArray pdf = makePdf(document);
    carryOut(path, [&] { return file.write(pdf) == pdf.size() && file.flush() && file.commit(); });
}

}  // namespace FendaMaestros
