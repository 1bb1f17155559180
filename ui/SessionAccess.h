#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

#include "session/Recordset.h"

namespace FendaMaestros {

/// Runs one read on the session of InstanciaActual. Never null; errors as ConexionBd::Execute and WorkContext::sesion.
std::shared_ptr<Recordset> read(std::string_view sql);

/// The active fiscal year of the session of InstanciaActual, and the plan in force in it. Errors as
/// ParametrosEmpresa::Item and WorkContext::sesion.
std::int16_t ejercicioActivo();
std::int16_t planEnVigor();

}  // namespace FendaMaestros
