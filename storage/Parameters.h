#pragma once

#include "session/Companies.h"
#include "session/ConexionBd.h"
#include "session/ParametrosEmpresa.h"

namespace FendaMaestros::storage {

/// Writes the parameters of a new company.
void storeParameters(ConexionBd& connection, const NewCompany& company);
ParametrosEmpresa readParameters(ConexionBd& connection);

}  // namespace FendaMaestros::storage
