#pragma once

#include "capi/Desktops.h"
#include "capi/Sessions.h"

namespace FendaMaestros::capi {

/// An object of the public class, with what a host has given it.
class ObjectThing final : public Thing {
public:
    static constexpr Kind kindOfThing = Kind::Object;

    /// `components` of the host; null for our own. The desktop must outlive the object.
    ObjectThing(DesktopThing& desktop, const fenda_components* components);
    ~ObjectThing() override;

    DesktopThing& desktop() const { return desktop_; }
    FendaMaes& component() { return component_; }
    bool isRunning() const { return running_ > 0; }

    /// One of the two properties that are sessions; null for none.
    fenda_session* session(SesionBd* FendaMaes::*property) const;
    /// `thing` is what the handle stands for; both null for none.
    void setSession(SesionBd* FendaMaes::*property, fenda_session* handle, SessionThing* thing);
    /// The handle of a session that a component of ours was given; null for one that is no property.
    fenda_session* handleOf(const SesionBd* session) const;

    /// One of the operations, as long as it goes on: screens work with this object, whatever others live.
    class Operation {
    public:
        explicit Operation(ObjectThing& object)
            : object_(object), instance_(InstanciaActual), running_(object.desktop_.running) {
            InstanciaActual = &object.component_;
            object.desktop_.running = &object.component_;
            ++object.running_;
        }
        Operation(const Operation&) = delete;
        Operation& operator=(const Operation&) = delete;
        ~Operation() {
            --object_.running_;
            object_.desktop_.running = running_;
            InstanciaActual = instance_;
        }

    private:
        ObjectThing& object_;
        WorkContext* instance_;
        FendaMaes* running_;
    };

private:
    /// A session as the host has set it.
    struct Given {
        fenda_session* handle = nullptr;
        SessionThing* thing = nullptr;
    };
    Given& given(SesionBd* FendaMaes::*property) { return property == &FendaMaes::MyBd ? main_ : origin_; }

    DesktopThing& desktop_;
    fenda_components host_{};
    ComponentRegistry components_;
    FendaMaes component_;
    Given main_, origin_;
    int running_ = 0;
};

}  // namespace FendaMaestros::capi
