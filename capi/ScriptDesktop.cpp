#include <sstream>
#include <stdexcept>

#include "app/guion/GuionOperator.h"
#include "app/guion/GuionParser.h"
#include "app/guion/PublicProperties.h"
#include "capi/Desktops.h"
#include "capi/Object.h"
#include "capi/Texts.h"
#include "platform/headless/HeadlessDesktop.h"
#include "platform/headless/HeadlessGestures.h"
#include "toolkit/Text.h"

namespace FendaMaestros::capi {

namespace {

std::vector<Command> parsed(std::string_view script) {
    std::istringstream lines{std::string(script)};
    return parseGuion(lines);
}

GuionDesktop withoutDisplay(Operator& person) {
    auto desktop = std::make_unique<HeadlessDesktop>(person, writePdfByModule);
    const HeadlessDesktop* const shown = desktop.get();
    return {.display = nullptr,
            .desktop = std::move(desktop),
            .gestures = std::make_unique<HeadlessGestures>(),
            .pointer = [shown] { return shown->pointer(); }};
}

/// A script in a person's place, for the operations of a host and, when it is run, for its own.
class ScriptDesktop final : public DesktopThing, private GuionHost {
public:
    ScriptDesktop(std::string_view script, bool windows)
        : person_(parsed(script), out_), shown_(windows ? openWindows(&person_) : withoutDisplay(person_)) {
        person_.workFor(*this);
    }

    Desktop& desktop() override { return *shown_.desktop; }
    void beginOperation() override { person_.rethrowFailure(); }
    void rethrowFailure() const override { person_.rethrowFailure(); }

    void run() { person_.run(*this); }
    std::string output() const { return out_.str(); }

private:
    Gestures& gestures() override { return *shown_.gestures; }
    int pointer() const override { return shown_.pointer(); }
    FendaMaes& component() override { return object(); }
    std::vector<std::pair<std::string, Variant>> properties() const override {
        std::vector<std::pair<std::string, Variant>> all;
        for (const PublicProperty& property : publicProperties())
            all.emplace_back(property.name, property.get(object()));
        return all;
    }
    void setProperty(const std::string& name, const std::string& value) override {
        const PublicProperty& property = checkedProperty(name, value);
        if (std::string_view(property.name).starts_with("MyBd")) refuseToHost();
        property.set(object(), nullptr, value);
    }
    void renewObject() override { refuseToHost(); }
    void createCompany(const TypedCompany&) override { refuseToHost(); }
    void openCompany(const std::string&) override { refuseToHost(); }
    SesionBd* session() override { return object().MyBd; }
    void trace(bool) override { refuseToHost(); }

    FendaMaes& object() const {
        if (!running) throw std::logic_error("No hay ninguna operación en curso.");
        return *running;
    }
    [[noreturn]] static void refuseToHost() {
        throw std::invalid_argument("aquí las empresas y los objetos son de la aplicación, no del guion");
    }

    std::ostringstream out_;
    GuionOperator person_;
    GuionDesktop shown_;
};

/// Throws Refusal when the desktop has no script.
ScriptDesktop& scriptOf(fenda_desktop* desktop) {
    auto* const script = dynamic_cast<ScriptDesktop*>(&Registry::instance().find<DesktopThing>(desktop));
    if (!script) refuseArgument("El escritorio no tiene ningún guion.");
    return *script;
}

}  // namespace

std::unique_ptr<DesktopThing> scriptDesktop(std::string_view script, bool windows) {
    return std::make_unique<ScriptDesktop>(script, windows);
}

}  // namespace FendaMaestros::capi

using namespace FendaMaestros::capi;

fenda_status fenda_desktop_script(const char* script, bool windows, fenda_desktop** desktop) {
    return guardedMaking(desktop, [&] { return scriptDesktop(taken(script), windows); });
}

fenda_status fenda_script_run(fenda_desktop* desktop, fenda_object* object) {
    return guarded([&] {
        ScriptDesktop& script = scriptOf(desktop);
        ObjectThing& on = Registry::instance().find<ObjectThing>(object);
        if (&on.desktop() != &script) refuseArgument("El objeto está en otro escritorio.");
        if (script.desktop().activeForm()) refuse(FENDA_IN_USE, "Hay una pantalla abierta.");
        const ObjectThing::Operation operation(on);
        script.run();
    });
}

fenda_status fenda_script_output(fenda_desktop* desktop, char** output) {
    return guarded([&] {
        const ScriptDesktop& script = scriptOf(desktop);
        giveRequired(output, script.output());
    });
}
