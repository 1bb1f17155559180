#pragma once

#include <memory>

#include "capi/Registry.h"
#include "session/SesionBd.h"

namespace FendaMaestros::capi {

class SessionThing final : public Thing {
public:
    static constexpr Kind kindOfThing = Kind::Session;

    explicit SessionThing(std::unique_ptr<SesionBd> session) : Thing(kindOfThing), session_(std::move(session)) {}

    SesionBd& session() const { return *session_; }
    /// Properties of objects that have this session.
    int uses = 0;

private:
    std::unique_ptr<SesionBd> session_;
};

}  // namespace FendaMaestros::capi
