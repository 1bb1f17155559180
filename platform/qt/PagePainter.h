#pragma once

class QPainter;

namespace FendaMaestros {
struct Page;
}

namespace FendaMaestros::qt {

/// Paints a page with the painter's coordinates in twips from the paper's corner; scale the painter beforehand. The one
/// place where pages become ink: previews, printers and PDF files share it.
void paintPage(QPainter& painter, const Page& page);

}  // namespace FendaMaestros::qt
