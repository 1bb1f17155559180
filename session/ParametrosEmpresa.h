#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include "toolkit/Variant.h"

namespace FendaMaestros {

struct Parametro {
    Variant Value;
};

/// The company parameters: `Par_Ejercicio`, `Par_CtaNum`, `Par_Provincia`, `Par_Nombre`, `PAR_ORCONTANOM`. Names are
/// compared without regard to case.
class ParametrosEmpresa {
public:
    /// Throws ErrorBd (Refused) when the company has no such parameter.
    const Parametro& Item(std::string_view name) const;
    void set(std::string_view name, Variant value);
    /// By capital name.
    const std::map<std::string, Parametro>& all() const { return byName_; }

private:
    std::map<std::string, Parametro> byName_;
};

/// The general accounting plan in force in a fiscal year: 2008 (Real Decreto 1514/2007) from 2008 on, before 1990
/// (Real Decreto 1643/1990).
constexpr std::int16_t planEnVigor(std::int16_t ejercicio) { return ejercicio >= 2008 ? 2008 : 1990; }

/// The active fiscal year, `Par_Ejercicio`. Errors as ParametrosEmpresa::Item.
std::int16_t ejercicioActivo(const ParametrosEmpresa& parameters);
/// The digits of a sub-account's code, `Par_CtaNum`, 1 to 20. Throws std::runtime_error, in Spanish, when the parameter
/// makes no sense; else errors as ParametrosEmpresa::Item.
std::size_t digitosSubcuenta(const ParametrosEmpresa& parameters);

/// Throws, as the two above, unless screens can work with a company that has these parameters.
void requireUsable(const ParametrosEmpresa& parameters);

}  // namespace FendaMaestros
