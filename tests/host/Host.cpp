#include <iostream>
#include <string>

#include "component/FendaMaes.h"
#include "platform/headless/HeadlessDesktop.h"
#include "platform/sqlite/Session.h"
#include "session/SesionSql.h"
#include "toolkit/Form.h"

using namespace FendaMaestros;

// Someone who looks at each screen and closes it.
struct Onlooker final : Operator {
    std::string seen;

    void attend(Form& form) override { seen = form.Caption; }
    Reply answer(const Message& message) override { throw std::runtime_error(message.text); }
    std::optional<std::string> saveFile(const std::string&, const std::string&) override { return std::nullopt; }
};

int main() {
    Onlooker person;
    HeadlessDesktop desktop(person);
    ComponentRegistry components;
    SesionSql session(sqlite::openMemory(), ParametrosEmpresa{});
    FendaMaes fenda(desktop, components);
    fenda.MyBd = &session;

    fenda.jPaises();
    std::string identifier = "12345678-z";
    bool const valid = fenda.FnVerificarCif(identifier);
    std::cout << person.seen << '\n' << identifier << '\n';
    return valid && !person.seen.empty() ? 0 : 1;
}
