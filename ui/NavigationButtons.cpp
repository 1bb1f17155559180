#include "ui/NavigationButtons.h"

#include <array>

namespace FendaMaestros {

NavigationButtons::NavigationButtons(const std::function<void(Step)>& go) {
    static constexpr std::array captions{"Primero", "Anterior", "Siguiente", "Ultimo"};
    frame.Caption = "Navegación";
    for (const auto& [index, button] : cmdNav.elements()) {
        button->Caption = captions[static_cast<std::size_t>(index)];
        button->Click = [go, step = static_cast<Step>(index)] { go(step); };
    }
}

Arrangement NavigationButtons::arrangement() {
    using namespace arrange;
    std::vector<Arrangement> buttons;
    for (const auto& [index, button] : cmdNav.elements()) buttons.push_back(plain(*button));
    return framed(frame, {row(std::move(buttons))});
}

}  // namespace FendaMaestros
