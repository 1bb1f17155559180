#include "app/guion/GuionDesktop.h"

#include "app/Composition.h"
#include "platform/headless/HeadlessDesktop.h"
#include "platform/headless/HeadlessGestures.h"

namespace FendaMaestros {

GuionDesktop headlessDesktop(Operator& person) {
    auto desktop = std::make_unique<HeadlessDesktop>(person, pdfWriter());
    const HeadlessDesktop* const shown = desktop.get();
    return {.display = nullptr,
            .desktop = std::move(desktop),
            .gestures = std::make_unique<HeadlessGestures>(),
            .pointer = [shown] { return shown->pointer(); }};
}

}  // namespace FendaMaestros
