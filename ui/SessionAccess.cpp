#include "ui/SessionAccess.h"

#include "session/ParametrosEmpresa.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

std::shared_ptr<Recordset> read(std::string_view sql) { return instanciaActual().sesion().Conexion()->Execute(sql); }

std::int16_t ejercicioActivo() { return ejercicioActivo(instanciaActual().sesion().Parametros()); }

std::int16_t planEnVigor() { return planEnVigor(ejercicioActivo()); }

}  // namespace FendaMaestros
