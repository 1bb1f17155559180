#include "app/window/Display.h"

#include <QApplication>
#include <cstdlib>
#include <stdexcept>
#include <utility>

#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtGestures.h"
#include "platform/qt/Silence.h"

namespace FendaMaestros::window {

namespace {

constexpr const char* platformVariable = "QT_QPA_PLATFORM";

bool isSet(const char* variable) {
    const char* const value = std::getenv(variable);
    return value && *value;
}

/// The application object with what it keeps pointing at.
struct Windows {
    int argc = 1;
    char name[6] = "fenda";
    char* argv[2] = {name, nullptr};
    QApplication application{argc, argv};

    /// The desktop entry, whose icon the windows get.
    Windows() { QGuiApplication::setDesktopFileName("fenda"); }
};

}  // namespace

std::shared_ptr<void> openDisplay(const std::string& instead) {
    const std::runtime_error noDisplay("No hay pantalla donde abrir ventanas" + instead + ".");
    const bool chosen = isSet(platformVariable);
    if (!chosen) {
        if (!isSet("DISPLAY") && !isSet("WAYLAND_DISPLAY")) throw noDisplay;
        // A display that cannot be reached ends the program, unless there is a last resort.
        ::setenv(platformVariable, isSet("WAYLAND_DISPLAY") ? "wayland;xcb;offscreen" : "xcb;offscreen", 1);
    }
    std::shared_ptr<Windows> windows;
    {
        const qt::Silence silence;
        windows = std::make_shared<Windows>();
    }
    if (!chosen) ::unsetenv(platformVariable);
    if (!chosen && QGuiApplication::platformName() == "offscreen") throw noDisplay;
    return windows;
}

GuionDesktop windowDesktop(Operator& person) {
    auto display = openDisplay();
    return {.display = std::move(display),
            .desktop = std::make_unique<QtDesktop>(&person),
            .gestures = std::make_unique<QtGestures>(),
            .pointer = [] { return QGuiApplication::overrideCursor() ? 13 : 0; }};
}

}  // namespace FendaMaestros::window
