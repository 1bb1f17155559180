#include "app/operations/Operations.h"
#include "toolkit/Keys.h"

namespace FendaMaestros {

namespace {

Operation screen(std::string name, std::string caption, KeyStroke key, void (FendaMaes::*show)()) {
    return {.name = std::move(name),
            .group = "&Tablas",
            .caption = std::move(caption),
            .key = key,
            .open = [show](FendaMaes& component) { (component.*show)(); },
            .call =
                [show](FendaMaes& component, const Arguments&) {
                    (component.*show)();
                    return Outcome{};
                }};
}

}  // namespace

std::vector<Operation> tableOperations() {
    return {
        screen("jCentros", "&Centros de trabajo", {key::F(2)}, &FendaMaes::jCentros),
        screen("jDepartamentos", "&Departamentos", {key::F(3)}, &FendaMaes::jDepartamentos),
        screen("jConceptos", "C&onceptos contables", {key::F(4)}, &FendaMaes::jConceptos),
        screen("jPaises", "&Países", {key::F(5)}, &FendaMaes::jPaises),
        screen("jMasas", "&Masas patrimoniales", {key::F(6)}, &FendaMaes::jMasas),
    };
}

}  // namespace FendaMaestros
