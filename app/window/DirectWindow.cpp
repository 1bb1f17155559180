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
    auto* button = dynamic_cast<CommandButton*>(activeControl());
    if (!button) button = firstButton();
    if (button && canFocus(*button) && button->Click) button->Click();
}

CommandButton* DirectWindow::firstButton() const {
    for (Control* control : controls())
        if (auto* button = dynamic_cast<CommandButton*>(control)) return button;
    return nullptr;
}

}  // namespace FendaMaestros
