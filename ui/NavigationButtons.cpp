#include "ui/NavigationButtons.h"

#include <array>

namespace FendaMaestros {

const std::string& destination(const Walk& walk, Step step) {
    const auto& neighbour = step == Step::Previous ? walk.previous : walk.next;
    const bool towardsFirst = step == Step::First || step == Step::Previous;
    const bool toTheEnd = step == Step::First || step == Step::Last || neighbour.empty();
    if (!toTheEnd) return neighbour;
    return towardsFirst ? walk.first : walk.last;
}

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
