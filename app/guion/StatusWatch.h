#pragma once

#include <string>

#include "toolkit/Form.h"

namespace FendaMaestros::guion {

/// What the status line of the screen on top comes to say while one lives; without a screen, what the last one has
/// left.
class StatusWatch {
public:
    /// `desktop` must outlive it.
    explicit StatusWatch(const Desktop& desktop) : desktop_(desktop), form_(desktop.activeForm()), text_(shown()) {}

    /// The text shown now; "" when it is the one that was shown before.
    std::string news() const {
        const Form* const form = desktop_.activeForm();
        std::string text = shown();
        return form == form_ && text == text_ ? std::string() : text;
    }

    /// "" for a screen that is closed or has no status line.
    static std::string textOf(const Form* form) {
        const bool shows = form && form->isOpen() && form->statusLine();
        return shows ? form->statusLine()->shown() : std::string();
    }

private:
    std::string shown() const {
        const Form* const form = desktop_.activeForm();
        return form ? textOf(form) : desktop_.lastWords();
    }

    const Desktop& desktop_;
    const Form* form_;
    std::string text_;
};

}  // namespace FendaMaestros::guion
