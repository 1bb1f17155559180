#include "session/ParametrosEmpresa.h"

#include "session/ErrorBd.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

const Parametro& ParametrosEmpresa::Item(std::string_view name) const {
    const auto found = byName_.find(text::upper(name));
    if (found == byName_.end())
        throw ErrorBd(ErrorBd::Kind::Refused, "La empresa no tiene el parámetro " + std::string(name));
    return found->second;
}

void ParametrosEmpresa::set(std::string_view name, Variant value) {
    byName_[text::upper(name)].Value = std::move(value);
}

}  // namespace FendaMaestros
