#pragma once

#include <functional>
#include <memory>

#include "toolkit/Desktop.h"
#include "toolkit/Operator.h"

namespace FendaMaestros {

/// A desktop on which an operator works, and its hands.
struct GuionDesktop {
    /// The windowing system, where there is one; it outlives the rest.
    std::shared_ptr<void> display;
    std::unique_ptr<Desktop> desktop;
    std::unique_ptr<Gestures> gestures;
    /// The pointer as Desktop::setPointer left it.
    std::function<int()> pointer;
};

/// Without a display. `person` must outlive it.
GuionDesktop headlessDesktop(Operator& person);

}  // namespace FendaMaestros
