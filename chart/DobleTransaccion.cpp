#include "chart/DobleTransaccion.h"

#include "component/FendaMaes.h"

namespace FendaMaestros {

DobleTransaccion::DobleTransaccion(const FendaMaes& component) {
    const auto own = component.sesion().Conexion();
    bd_.emplace(own);
    const auto second = component.sesionOrigen().Conexion();
    unaSolaConexion_ = own == second;
    origen_.emplace(second);
}

}  // namespace FendaMaestros
