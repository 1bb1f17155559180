#pragma once

#include <exception>

#include "capi/Registry.h"
#include "toolkit/Form.h"
#include "toolkit/Operator.h"

namespace FendaMaestros::capi {

/// A screen that a host attends.
class FormThing final : public Thing {
public:
    static constexpr Kind kindOfThing = Kind::Form;

    /// `failure` receives what a gesture throws, which ends the screen. All must outlive the thing.
    FormThing(Form& form, Gestures& hands, std::exception_ptr& failure)
        : Thing(kindOfThing), form_(form), hands_(hands), failure_(failure) {}

    Form& form() const { return form_; }
    /// Throws Refusal (FENDA_BAD_ARGUMENT) when the screen has no such control, or it is of another kind.
    Control& control(const char* name) const;
    template <class Kind>
    Kind& control(const char* name) const {
        if (auto* const typed = dynamic_cast<Kind*>(&control(name))) return *typed;
        refuseArgument("El control es de otra clase.");
    }

    /// Makes a gesture, unless the screen is closed. Throws what the gesture throws, and from then on the same.
    template <class Gesture>
    void act(Gesture&& gesture) {
        if (failure_) std::rethrow_exception(failure_);
        if (!form_.isOpen()) return;
        // However fast a host is, each is a person's gesture of its own.
        form_.desktop().letPass(ListTyping::pause);
        try {
            gesture(form_, hands_);
        } catch (...) {
            failure_ = std::current_exception();
            throw;
        }
    }

private:
    Form& form_;
    Gestures& hands_;
    std::exception_ptr& failure_;
};

}  // namespace FendaMaestros::capi
