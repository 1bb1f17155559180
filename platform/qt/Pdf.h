#pragma once

#include <string>

namespace FendaMaestros {

class PagedDocument;

/// Writes a document as a PDF file whose text stays text. Needs no display and no QtDesktop.
/// Throws std::runtime_error, in Spanish, when the file cannot be written; then there is no file, or the one that was
/// there before.
void writePdf(const PagedDocument& document, const std::string& path);

}  // namespace FendaMaestros
