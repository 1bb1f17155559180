#pragma once

#include "ui/Screen.h"

namespace FendaMaestros {

/// A window of the program that only asks for one thing: there Enter does not move on, it presses the button that has
/// the focus or, from a field, the first one.
class DirectWindow : public Screen {
protected:
    DirectWindow() = default;
    /// For a window that no company needs to be open for; it searches in none.
    explicit DirectWindow(Desktop& desktop) : Screen(desktop), searches_(false) {}

    /// False for a window with several fields, where Enter goes on to the next one; on a button it presses all the
    /// same.
    virtual bool answersFromFields() const { return true; }

    void onLoad() override;
    void onKeyDown(int& code, int shift) override;
    void onKeyUp(int& code, int shift) override;

private:
    void press();
    Button* firstButton() const;

    bool searches_ = true;
    bool enterPressed_ = false;
};

}  // namespace FendaMaestros
