#pragma once

#include <functional>

#include "toolkit/Controls.h"
#include "toolkit/Keys.h"

namespace FendaMaestros {

/// What a key does to the control that has the focus.
struct KeyEffect {
    /// False: the key is left to the text that is being edited, or to the widget.
    bool done = true;
    /// What changes; null when nothing does.
    std::function<void()> change;
    /// Where the focus goes afterwards; null when it stays.
    Control* focus = nullptr;
};

/// Space presses buttons and ticks boxes, arrows move in tables and lists and between the options of a group, Ctrl with
/// a digit clicks the header of that visible column of a grid. Enter, Tab and accelerators are the form's own.
KeyEffect effectOf(KeyStroke stroke, Control& control);

}  // namespace FendaMaestros
