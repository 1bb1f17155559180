#include <QApplication>
#include <optional>

#include "app/window/Display.h"
#include "capi/WindowsModule.h"
#include "platform/qt/Pdf.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtGestures.h"
#include "platform/qt/Silence.h"
#include "ui/Version.h"

namespace {

using namespace FendaMaestros;

constexpr int arrowAndHourglass = 13;

GuionDesktop open(Operator* person) {
    // A host with an application of its own has its display already.
    auto display = QCoreApplication::instance() ? nullptr : window::openDisplay("");
    return {.display = std::move(display),
            .desktop = std::make_unique<QtDesktop>(person),
            .gestures = std::make_unique<QtGestures>(),
            .pointer = [] { return QGuiApplication::overrideCursor() ? arrowAndHourglass : 0; }};
}

/// Fonts need an application object. Where there is none, one without a display lives as long as the file is written.
void writePages(const PagedDocument& document, const std::string& path) {
    int argc = 3;
    char name[] = "fenda", option[] = "-platform", platform[] = "offscreen";
    char* argv[] = {name, option, platform, nullptr};
    std::optional<QGuiApplication> application;
    if (!QCoreApplication::instance()) {
        const qt::Silence silence;
        application.emplace(argc, argv);
    }
    writePdf(document, path);
}

constexpr capi::WindowsModule module{open, writePages};

}  // namespace

extern "C" __attribute__((visibility("default"))) const capi::WindowsModule* fenda_windows_module(const char* version) {
    return componentVersion() == version ? &module : nullptr;
}
