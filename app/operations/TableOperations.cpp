#include "app/operations/Operations.h"
#include "toolkit/Keys.h"

namespace FendaMaestros {

std::vector<Operation> tableOperations() {
    const std::string menu = "&Tablas";
    return {
        screenOperation("jCentros", menu, "&Centros de trabajo", {key::F(2)}, &FendaMaes::jCentros),
        screenOperation("jDepartamentos", menu, "&Departamentos", {key::F(3)}, &FendaMaes::jDepartamentos),
        screenOperation("jConceptos", menu, "C&onceptos contables", {key::F(4)}, &FendaMaes::jConceptos),
        screenOperation("jPaises", menu, "&Países", {key::F(5)}, &FendaMaes::jPaises),
        screenOperation("jMasas", menu, "&Masas patrimoniales", {key::F(6)}, &FendaMaes::jMasas),
    };
}

}  // namespace FendaMaestros
