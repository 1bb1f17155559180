#include "app/guion/GuionDesktop.h"

#include <stdexcept>

#include "app/window/Display.h"
#include "platform/headless/HeadlessDesktop.h"
#include "platform/headless/HeadlessGestures.h"

#ifdef FENDA_WITH_QT
#include <QGuiApplication>

#include "platform/qt/Pdf.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtGestures.h"
#endif

namespace FendaMaestros {

GuionDesktop headlessDesktop(Operator& person) {
    HeadlessDesktop::PdfWriter pdf;
#ifdef FENDA_WITH_QT
    pdf = [](const PagedDocument& document, const std::string& path) { writePdf(document, path); };
#endif
    auto desktop = std::make_unique<HeadlessDesktop>(person, std::move(pdf));
    const HeadlessDesktop* const shown = desktop.get();
    return {.display = nullptr,
            .desktop = std::move(desktop),
            .gestures = std::make_unique<HeadlessGestures>(),
            .pointer = [shown] { return shown->pointer(); }};
}

#ifdef FENDA_WITH_QT

GuionDesktop windowDesktop(Operator& person) {
    auto display = openDisplay();
    return {.display = std::move(display),
            .desktop = std::make_unique<QtDesktop>(&person),
            .gestures = std::make_unique<QtGestures>(),
            .pointer = [] { return QGuiApplication::overrideCursor() ? 13 : 0; }};
}

#else

GuionDesktop windowDesktop(Operator&) {
    throw std::runtime_error("Este programa se ha construido sin ventanas: el guion se ejecuta sin --ventana.");
}

#endif

}  // namespace FendaMaestros
