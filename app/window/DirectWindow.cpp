#include "app/window/DirectWindow.h"

#include <utility>

namespace FendaMaestros {

void DirectWindow::onLoad() {
    explainKey({key::Enter}, answersFromFields() ? "Pulsar el botón que tiene el foco o, desde un campo, el primero"
                                                 : "Ir al campo siguiente o pulsar el botón que tiene el foco");
    if (searches_) return Screen::onLoad();
    Ayuda.ColorFoco = focusColor;
}

void DirectWindow::onKeyDown(int& code, int /*shift*/) { enterPressed_ = code == key::Enter; }

/// An Enter that was pressed elsewhere, to open this window or to answer a message over it, presses nothing here.
void DirectWindow::onKeyUp(int& code, int shift) {
    const bool onButton = activeControl() && activeControl()->asButton();
    if (code != key::Enter || !(onButton || answersFromFields())) return Screen::onKeyUp(code, shift);
    code = 0;
    if (std::exchange(enterPressed_, false)) press();
}

void DirectWindow::press() {
    Button* button = activeControl() ? activeControl()->asButton() : nullptr;
    if (!button) button = firstButton();
    if (button && canFocus(*button)) button->press();
}

Button* DirectWindow::firstButton() const {
    for (Control* control : controls())
        if (Button* const button = control->asButton()) return button;
    return nullptr;
}

}  // namespace FendaMaestros
