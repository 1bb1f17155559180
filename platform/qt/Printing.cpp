#include "platform/qt/Printing.h"

#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <stdexcept>

#include "platform/qt/PagePainter.h"
#include "toolkit/Document.h"

namespace FendaMaestros::qt {

namespace {

void setPaper(QPrinter& printer, const PagedDocument& document) {
    constexpr double twipsPerPoint = 20;
    QSizeF points(document.pageWidth() / twipsPerPoint, document.pageHeight() / twipsPerPoint);
    const bool wide = points.width() > points.height();
    printer.setPageOrientation(wide ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer.setPageSize(QPageSize(wide ? points.transposed() : points, QPageSize::Point));
    printer.setFullPage(true);
    printer.setDocName(QString::fromStdString(document.title()));
}

void requireTaken(bool taken) {
    if (!taken) throw std::runtime_error("La impresora no ha aceptado el documento.");
}

}  // namespace

bool printWithDialog(const PagedDocument& document, QWidget* parent) {
    if (QPrinterInfo::availablePrinterNames().isEmpty()) throw std::runtime_error("No hay ninguna impresora.");
    QPrinter printer(QPrinter::HighResolution);
    setPaper(printer, document);
    QPrintDialog dialog(&printer, parent);
    dialog.setMinMax(1, document.pageCount());
    dialog.setOptions(QAbstractPrintDialog::PrintPageRange | QAbstractPrintDialog::PrintCollateCopies);
    if (dialog.exec() != QDialog::Accepted) return false;

    const int first = printer.fromPage() ? printer.fromPage() : 1;
    const int last = printer.toPage() ? printer.toPage() : document.pageCount();
    QPainter painter;
    requireTaken(painter.begin(&printer));
    constexpr double twipsPerInch = 1440;
    const double scale = printer.resolution() / twipsPerInch;
    painter.scale(scale, scale);
    for (int number = first; number <= last; ++number) {
        if (number > first) requireTaken(printer.newPage());
        paintPage(painter, document.page(number - 1));
    }
    requireTaken(painter.end());
    return true;
}

}  // namespace FendaMaestros::qt
