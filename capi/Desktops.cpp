#include "capi/Desktops.h"

#include "capi/Object.h"
#include "capi/Structures.h"
#include "capi/Texts.h"
#include "capi/WindowsModule.h"

namespace FendaMaestros::capi {

namespace {

class WindowsDesktop final : public DesktopThing {
public:
    WindowsDesktop() : windows_(openWindows(nullptr)) {}
    Desktop& desktop() override { return *windows_.desktop; }

private:
    GuionDesktop windows_;
};

}  // namespace

GuionDesktop openWindows(Operator* person) {
    const WindowsModule& module = windowsModule();
    try {
        return module.open(person);
    } catch (const std::exception& error) {
        throw Refusal{FENDA_NO_WINDOWS, error.what()};
    }
}

void writePdfByModule(const PagedDocument& document, const std::string& path) {
    try {
        windowsModule().writePdf(document, path);
    } catch (const Refusal& refusal) {
        throw std::runtime_error(refusal.text);
    }
}

std::unique_ptr<DesktopThing> windowsDesktop() { return std::make_unique<WindowsDesktop>(); }

}  // namespace FendaMaestros::capi

using namespace FendaMaestros::capi;

fenda_status fenda_desktop_windows(fenda_desktop** desktop) {
    return guardedMaking(desktop, [] { return windowsDesktop(); });
}

fenda_status fenda_desktop_callbacks_open(const fenda_desktop_callbacks* callbacks, fenda_desktop** desktop) {
    return guardedMaking(desktop, [&] { return callbacksDesktop(takenStructure(callbacks)); });
}

fenda_status fenda_desktop_close(fenda_desktop* desktop) {
    return guarded([&] {
        Registry& registry = Registry::instance();
        if (registry.find<DesktopThing>(desktop).objects > 0) refuse(FENDA_IN_USE, "Un objeto está en el escritorio.");
        registry.close(desktop);
    });
}
