#pragma once

#include <memory>

#include "app/guion/GuionDesktop.h"
#include "capi/Registry.h"
#include "component/FendaMaes.h"

namespace FendaMaestros::capi {

/// Where a host's screens are shown.
class DesktopThing : public Thing {
public:
    static constexpr Kind kindOfThing = Kind::Desktop;

    DesktopThing() : Thing(kindOfThing) {}

    virtual Desktop& desktop() = 0;
    /// Throws when whoever works in a person's place cannot go on.
    virtual void beginOperation() {}
    /// Throws again what has failed with whoever works in a person's place, for a screen may have swallowed it.
    virtual void rethrowFailure() const {}

    /// Objects on it.
    int objects = 0;
    /// The object whose operation is under way; null between operations.
    FendaMaes* running = nullptr;
};

/// Throws Refusal (FENDA_NO_WINDOWS) when there are none.
std::unique_ptr<DesktopThing> windowsDesktop();
/// Throws GuionError for a script that cannot be understood, else as windowsDesktop().
std::unique_ptr<DesktopThing> scriptDesktop(std::string_view script, bool windows);
/// Throws Refusal (FENDA_BAD_ARGUMENT) when a callback is missing.
std::unique_ptr<DesktopThing> callbacksDesktop(const fenda_desktop_callbacks& host);

/// Windows for an operator or, without one, for a person. Throws Refusal (FENDA_NO_WINDOWS) when there are none.
GuionDesktop openWindows(Operator* person);
/// Writes pages with the module that the windows are in. Throws std::runtime_error, in Spanish.
void writePdfByModule(const PagedDocument& document, const std::string& path);

}  // namespace FendaMaestros::capi
