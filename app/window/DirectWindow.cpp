#include "app/window/DirectWindow.h"

#include <utility>

namespace FendaMaestros {

void DirectWindow::onKeyDown(int& code, int /*shift*/) { enterPressed_ = code == key::Enter; }

/// An Enter that was pressed elsewhere, to open this window or to answer a message over it, presses nothing here.
void DirectWindow::onKeyUp(int& code, int shift) {
    if (code != key::Enter) return Screen::onKeyUp(code, shift);
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
