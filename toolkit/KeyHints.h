#pragma once

#include <string>

#include "toolkit/Keys.h"

namespace FendaMaestros {

class Control;

/// A key that a screen answers and, for a person, what it does there: F1, "Buscar por código".
struct KeyHint {
    KeyStroke stroke;
    std::string does;
};

/// "F1", "Mayús+F1", "Alt+G", "Intro"; "" for a key without a name.
std::string keyName(KeyStroke stroke);

/// What a pointer that rests on a control is told: its ToolTip and its keys, "Guardar Cambios (F5, Alt+G)"; "" for
/// nothing.
std::string toolTipOf(const Control& control);

}  // namespace FendaMaestros
