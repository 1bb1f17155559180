#include "taxid/ExpresionNombre.h"

#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

std::string part(const std::string& column) {
    return "(case when isnull(" + column + ",'') = '' then '' else " + column + " + ' ' end ) ";
}

}  // namespace

std::string expresionNombre() {
    const bool nameFirst = instanciaActual().sesion().Parametros().Item("PAR_ORCONTANOM").Value.integer() == 0;
    const std::string name = part("Nif_nom");
    const std::string surnames = part("Nif_ape1") + "+ " + part("Nif_ape2");
    return nameFirst ? name + "+ " + surnames : surnames + "+ " + name;
}

std::string fnExpresionNombre() { return expresionNombre() + " AS Nombre"; }

}  // namespace FendaMaestros
