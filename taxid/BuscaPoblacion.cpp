#include "taxid/BuscaPoblacion.h"

#include "session/Literal.h"
#include "ui/SessionAccess.h"

namespace FendaMaestros {

std::string FnBuscaPoblacion(const std::string& PAIS, const std::string& Cpostal) {
    const auto rows = read("SELECT Top 1 Nif_Pob FROM KXComun.dbo.Nif WHERE Nif_PAIS = " + literal(PAIS) +
                           " AND Nif_Cp = " + literal(Cpostal));
    return rows->Eof() ? std::string() : rows->Fields("Nif_Pob").Value.text();
}

}  // namespace FendaMaestros
