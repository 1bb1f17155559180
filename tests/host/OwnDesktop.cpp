// A host with a desktop of its own, which needs the core and, for its screens, a session.
#include <chrono>
#include <stdexcept>

#include "Visit.h"
#include "toolkit/Form.h"

using namespace FendaMaestros;

namespace {

// Looks at each screen and closes it.
class OwnDesktop final : public Desktop {
public:
    std::string seen;

    bool stopAsked() override { return false; }
    bool mailFile(const std::string&) override { return false; }
    void processPending() override {}
    void wait(std::chrono::milliseconds) override {}
    std::optional<std::string> chooseSaveFile(const std::string&, const std::string&) override { return std::nullopt; }
    bool openFile(const std::string&) override { return false; }
    bool print(const PagedDocument&) override { return false; }
    void writePdf(const PagedDocument&, const std::string& path) override { throw std::runtime_error(path); }

protected:
    void runModal(Form& form) override {
        form.activate();
        seen = form.Caption;
        form.close();
    }
    Reply showMessage(const Message& message) override { throw std::runtime_error(message.text); }
    void showPointer(int) override {}
};

}  // namespace

int host() {
    OwnDesktop desktop;
    return visit(desktop, desktop.seen);
}
