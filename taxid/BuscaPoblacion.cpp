#include "taxid/BuscaPoblacion.h"

#include "component/FendaMaes.h"
#include "session/Condition.h"

namespace FendaMaestros {

std::string FnBuscaPoblacion(const std::string& PAIS, const std::string& Cpostal) {
    const auto rows = instanciaActual().sesion().Conexion()->Execute(
        "SELECT Top 1 Nif_Pob FROM KXComun.dbo.Nif WHERE Nif_PAIS = '" + insideQuotes(PAIS) + "' AND Nif_Cp = '" +
        insideQuotes(Cpostal) + "'");
    return rows->Eof() ? std::string() : rows->Fields("Nif_Pob").Value.text();
}

}  // namespace FendaMaestros
