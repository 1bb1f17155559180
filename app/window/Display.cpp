#include "app/window/Display.h"

#include <stdexcept>

#ifdef FENDA_WITH_QT
#include <QApplication>
#include <cstdlib>

#include "platform/qt/Silence.h"
#endif

namespace FendaMaestros {

#ifdef FENDA_WITH_QT

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
};

}  // namespace

std::shared_ptr<void> openDisplay() {
    const std::runtime_error noDisplay(
        "No hay pantalla donde abrir ventanas; sin ella se puede usar «fenda guion», «fenda nif» y «fenda crear».");
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

#else

std::shared_ptr<void> openDisplay() {
    throw std::runtime_error("Este programa se ha construido sin ventanas; con --ayuda se ven las demás órdenes.");
}

#endif

}  // namespace FendaMaestros
