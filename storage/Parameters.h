#pragma once

#include "session/Companies.h"
#include "session/ConexionBd.h"
#include "session/ParametrosEmpresa.h"

namespace FendaMaestros::storage {

/// Writes the parameters of a new company.
void storeParameters(ConexionBd& connection, const NewCompany& company);
/// Changes those of a company that is there, all or none; a session that is open keeps the ones it has read. Throws
/// ErrorBd (Refused) as check(), and what the connection throws.
void changeParameters(ConexionBd& connection, const NewCompany& company);
/// The write that gives the sub-accounts of a company another length, in digits. It touches one row.
Statement digitsChange(int digits);
ParametrosEmpresa readParameters(ConexionBd& connection);
/// What a company with these parameters would be created with; one that is missing is as NewCompany has it.
NewCompany companyOf(const ParametrosEmpresa& parameters);

}  // namespace FendaMaestros::storage
