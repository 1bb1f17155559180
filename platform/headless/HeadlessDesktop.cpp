#include "platform/headless/HeadlessDesktop.h"

#include <stdexcept>

#include "toolkit/Form.h"

namespace FendaMaestros {

bool HeadlessDesktop::openFile(const std::string& path) {
    openedFiles_.push_back(path);
    return true;
}

bool HeadlessDesktop::print(const PagedDocument&) { throw std::runtime_error("No hay ninguna impresora."); }

void HeadlessDesktop::writePdf(const PagedDocument& document, const std::string& path) {
    if (!pdf_) throw std::runtime_error("Este programa se ha construido sin salida en PDF.");
    pdf_(document, path);
}

void HeadlessDesktop::runModal(Form& form) {
    form.activate();
    if (form.isOpen()) person_.attend(form);
}

}  // namespace FendaMaestros
