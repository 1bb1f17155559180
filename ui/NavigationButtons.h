#pragma once

#include <functional>
#include <string>

#include "toolkit/Arrangement.h"
#include "toolkit/Controls.h"

namespace FendaMaestros {

/// Where a navigation button leads.
enum class Step { First, Previous, Next, Last };

/// What a screen walks through, as the ends of the reads that find its rows: the first, the last, and the neighbours of
/// the row shown; both empty when none is shown.
struct Walk {
    std::string first, last;
    std::string previous = {}, next = {};
};

/// The end of the read for a step. With nothing shown, the one before is the first and the one behind the last.
const std::string& destination(const Walk& walk, Step step);

/// The frame "Navegación" with the buttons `cmdNav` 0 to 3. The screen registers both.
struct NavigationButtons {
    explicit NavigationButtons(const std::function<void(Step)>& go);

    Arrangement arrangement();

    Frame frame;
    ControlArray<CommandButton> cmdNav{"cmdNav", {0, 1, 2, 3}};
};

}  // namespace FendaMaestros
