#include "ui/ExternalComponents.h"

namespace FendaMaestros {

std::unique_ptr<ExternalComponent> ComponentRegistry::createAny(const std::string& progId) const {
    const auto found = factories_.find(progId);
    auto made = found == factories_.end() ? nullptr : found->second();
    if (!made)
        throw std::runtime_error("No se puede crear el componente " + progId +
                                 ": no está registrado en este programa.");
    return made;
}

}  // namespace FendaMaestros
