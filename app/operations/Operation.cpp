#include "app/operations/Operation.h"

namespace FendaMaestros {

Operation screenOperation(std::string name, std::string group, std::string caption, KeyStroke key,
                          void (FendaMaes::*show)()) {
    return {.name = std::move(name),
            .group = std::move(group),
            .caption = std::move(caption),
            .key = key,
            .open = [show](FendaMaes& component) { (component.*show)(); },
            .call =
                [show](FendaMaes& component, const Arguments&) {
                    (component.*show)();
                    return Outcome{};
                }};
}

}  // namespace FendaMaestros
