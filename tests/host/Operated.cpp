// A host on the desktop of an adapter, where an operator works in a person's place.
#include <stdexcept>

#include "Visit.h"
#include "toolkit/Form.h"
#ifdef FENDA_WITH_QT
#include "platform/qt/QtDesktop.h"
#else
#include "platform/headless/HeadlessDesktop.h"
#endif

using namespace FendaMaestros;

namespace {

// Looks at each screen and closes it.
struct Onlooker final : Operator {
    std::string seen;

    void attend(Form& form) override { seen = form.Caption; }
    Reply answer(const Message& message) override { throw std::runtime_error(message.text); }
    std::optional<std::string> saveFile(const std::string&, const std::string&) override { return std::nullopt; }
};

}  // namespace

int host() {
    Onlooker person;
#ifdef FENDA_WITH_QT
    QtDesktop desktop(&person);
#else
    HeadlessDesktop desktop(person);
#endif
    return visit(desktop, person.seen);
}
