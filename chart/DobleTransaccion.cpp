#include "chart/DobleTransaccion.h"

#include "ui/WorkContext.h"

namespace FendaMaestros {

DobleTransaccion::DobleTransaccion(const WorkContext& component) {
    bd_.emplace(component.sesion().Conexion());
    origen_.emplace(component.sesionOrigen().Conexion());
}

}  // namespace FendaMaestros
