#include "session/ParametrosEmpresa.h"

#include <stdexcept>

#include "session/ErrorBd.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

const Parametro& ParametrosEmpresa::Item(std::string_view name) const {
    const auto found = byName_.find(text::upper(name));
    if (found == byName_.end())
        throw ErrorBd(ErrorBd::Kind::Refused, "La empresa no tiene el parámetro " + std::string(name) + ".");
    return found->second;
}

void ParametrosEmpresa::set(std::string_view name, Variant value) {
    byName_[text::upper(name)].Value = std::move(value);
}

std::int16_t ejercicioActivo(const ParametrosEmpresa& parameters) {
    return static_cast<std::int16_t>(parameters.Item("Par_Ejercicio").Value.integer());
}

std::size_t digitosSubcuenta(const ParametrosEmpresa& parameters) {
    constexpr int most = 20;
    const Variant digits = parameters.Item("Par_CtaNum").Value;
    if (digits.integer() < 1 || digits.integer() > most)
        throw std::runtime_error("Los dígitos de una subcuenta (Par_CtaNum) no pueden ser «" + digits.text() + "».");
    return static_cast<std::size_t>(digits.integer());
}

void requireUsable(const ParametrosEmpresa& parameters) {
    ejercicioActivo(parameters);
    digitosSubcuenta(parameters);
}

}  // namespace FendaMaestros
