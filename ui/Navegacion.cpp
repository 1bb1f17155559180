#include "ui/Navegacion.h"

#include <array>

namespace FendaMaestros {

Navegacion::Navegacion(const std::function<void(Paso)>& ir) {
    static constexpr std::array captions{"Primero", "Anterior", "Siguiente", "Ultimo"};
    marco.Caption = "Navegación";
    for (const auto& [index, button] : cmdNav.elements()) {
        button->Caption = captions[static_cast<std::size_t>(index)];
        button->Click = [ir, step = static_cast<Paso>(index)] { ir(step); };
    }
}

Arrangement Navegacion::disposicion() {
    using namespace arrange;
    std::vector<Arrangement> buttons;
    for (const auto& [index, button] : cmdNav.elements()) buttons.push_back(plain(*button));
    return framed(marco, {row(std::move(buttons))});
}

}  // namespace FendaMaestros
