#include "chart/DobleTransaccion.h"

#include "component/FendaMaes.h"

namespace FendaMaestros {

DobleTransaccion::DobleTransaccion(const FendaMaes& component) {
    bd_.emplace(component.sesion().Conexion());
    origen_.emplace(component.sesionOrigen().Conexion());
}

}  // namespace FendaMaestros
