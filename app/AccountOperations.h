#pragma once

#include "app/Operations.h"

/// The entry operations of sub-accounts, and those that look something up among accounts, concepts, withholding keys
/// and towns.
namespace FendaMaestros {

Outcome callAccounts(FendaMaes& component, const Arguments& arguments);
Outcome callNewAccount(FendaMaes& component, const Arguments& arguments);
Outcome callSearchAccounts(FendaMaes& component, const Arguments& arguments);
Outcome callSearchConcepts(FendaMaes& component, const Arguments& arguments);
Outcome callCheckAccount(FendaMaes& component, const Arguments& arguments);
Outcome callFillKeys(FendaMaes& component, const Arguments& arguments);
Outcome callFindTown(FendaMaes& component, const Arguments& arguments);

void openAccounts(FendaMaes& component);
void openNewAccount(FendaMaes& component);
void openSearchAccounts(FendaMaes& component);
void openSearchConcepts(FendaMaes& component);
void openCheckAccount(FendaMaes& component);
void openKeys(FendaMaes& component);
void openFindTown(FendaMaes& component);

}  // namespace FendaMaestros
