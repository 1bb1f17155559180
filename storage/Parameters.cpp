#include "storage/Parameters.h"

#include <utility>

namespace FendaMaestros::storage {

void storeParameters(ConexionBd& connection, const NewCompany& company) {
    const std::pair<const char*, Variant> values[] = {
        {"Par_Nombre", company.name},          {"Par_Ejercicio", company.fiscalYear},
        {"Par_CtaNum", company.accountDigits}, {"Par_Provincia", company.province},
        {"PAR_ORCONTANOM", company.nameOrder},
    };
    for (const auto& [name, value] : values)
        connection.run({"INSERT INTO Parametros (Par_Nom, Par_Valor) VALUES (?, ?)", {name, value}});
}

ParametrosEmpresa readParameters(ConexionBd& connection) {
    ParametrosEmpresa parameters;
    const auto rows = connection.Execute("SELECT Par_Nom, Par_Valor FROM Parametros");
    for (; !rows->Eof(); rows->MoveNext())
        parameters.set(rows->Fields("Par_Nom").Value.text(), rows->Fields("Par_Valor").Value);
    return parameters;
}

}  // namespace FendaMaestros::storage
