#include "platform/headless/HeadlessDesktop.h"

#include <algorithm>
#include <stdexcept>
#include <thread>

#include "toolkit/Form.h"

namespace FendaMaestros {

void HeadlessDesktop::wait(std::chrono::milliseconds time) {
    constexpr std::chrono::milliseconds breath(10);
    const auto slept = std::min(time, breath);
    std::this_thread::sleep_for(slept);
    letPass(time - slept);
}

bool HeadlessDesktop::openFile(const std::string& path) {
    openedFiles_.push_back(path);
    return true;
}

bool HeadlessDesktop::mailFile(const std::string& path) {
    mailedFiles_.push_back(path);
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
