#pragma once

#include <functional>

#include "toolkit/Arrangement.h"
#include "toolkit/Controls.h"

namespace FendaMaestros {

/// Where a navigation button leads.
enum class Step { First, Previous, Next, Last };

/// Where a step leads when nothing is shown: the one before is the first, the one behind the last.
constexpr Step fromNothing(Step step) {
    if (step == Step::Previous) return Step::First;
    return step == Step::Next ? Step::Last : step;
}

/// The frame "Navegación" with the buttons `cmdNav` 0 to 3. The screen registers both.
struct NavigationButtons {
    explicit NavigationButtons(const std::function<void(Step)>& go);

    Arrangement arrangement();

    Frame frame;
    ControlArray<CommandButton> cmdNav{"cmdNav", {0, 1, 2, 3}};
};

}  // namespace FendaMaestros
