#pragma once

class QWidget;

namespace FendaMaestros {
class PagedDocument;
}

namespace FendaMaestros::qt {

/// Asks for printer, copies and pages, and prints. False when the person leaves it. Throws std::runtime_error, in
/// Spanish, when there is no printer or it does not take the document.
bool printWithDialog(const PagedDocument& document, QWidget* parent);

}  // namespace FendaMaestros::qt
