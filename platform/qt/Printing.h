#pragma once

class QWidget;

namespace FendaMaestros {
class PagedDocument;
}

namespace FendaMaestros::qt {

/// Asks for printer, copies and pages, and prints. False when there is no printer, the person leaves it, or the printer
/// does not take the document.
bool printWithDialog(const PagedDocument& document, QWidget* parent);

}  // namespace FendaMaestros::qt
