#pragma once

#include <functional>

#include "toolkit/Arrangement.h"
#include "toolkit/Controls.h"

namespace FendaMaestros {

/// Where a navigation button leads.
enum class Paso { Primero, Anterior, Siguiente, Ultimo };

/// Where a step leads when nothing is shown: the one before is the first, the one behind the last.
constexpr Paso desdeNada(Paso step) {
    if (step == Paso::Anterior) return Paso::Primero;
    return step == Paso::Siguiente ? Paso::Ultimo : step;
}

/// The frame "Navegación" with the buttons `cmdNav` 0 to 3. The screen registers both.
struct Navegacion {
    explicit Navegacion(const std::function<void(Paso)>& ir);

    Arrangement disposicion();

    Frame marco;
    ControlArray<CommandButton> cmdNav{"cmdNav", {0, 1, 2, 3}};
};

}  // namespace FendaMaestros
