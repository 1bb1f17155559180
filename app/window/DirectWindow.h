#pragma once

#include "ui/Screen.h"

namespace FendaMaestros {

/// A window of the program that only asks for one thing: there Enter does not move on, it presses the button that has
/// the focus or, from a field, the first one.
class DirectWindow : public Screen {
protected:
    void onKeyDown(int& code, int shift) override;
    void onKeyUp(int& code, int shift) override;

private:
    void press();
    Button* firstButton() const;

    bool enterPressed_ = false;
};

}  // namespace FendaMaestros
