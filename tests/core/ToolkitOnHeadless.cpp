#include "platform/headless/HeadlessDesktop.h"
#include "platform/headless/HeadlessGestures.h"

namespace FendaMaestros::contract {

struct Platform {
    static std::unique_ptr<Desktop> desktop(Operator& person) { return std::make_unique<HeadlessDesktop>(person); }
    static std::unique_ptr<Gestures> gestures() { return std::make_unique<HeadlessGestures>(); }
};

}  // namespace FendaMaestros::contract

#include "tests/support/ToolkitContract.h"
