#pragma once

#include "session/Companies.h"
#include "session/ConexionBd.h"

/// What new databases begin with, written through a connection to them; the caller opens the transaction around it.
namespace FendaMaestros::storage {

/// Fills the empty shared database: countries, provinces, kinds of street, concepts, balance masses and balances.
void fillShared(ConexionBd& connection);

/// Fills an empty company: its parameters, the official plans and the towns.
void fillCompany(ConexionBd& connection, const NewCompany& company);

/// What the demonstration company is created with.
NewCompany demonstrationCompany();

/// Adds invented data to a company that has been filled: work centres, departments, sub-accounts, two years of journal
/// lines and invoices. The shared database gets the tax identities that it does not have yet.
void fillDemonstration(ConexionBd& connection);

}  // namespace FendaMaestros::storage
