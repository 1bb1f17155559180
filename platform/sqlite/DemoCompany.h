#pragma once

#include "platform/sqlite/Database.h"

namespace FendaMaestros::sqlite {

/// Fills a new company with invented data: work centres, departments, sub-accounts, two years of journal lines and
/// invoices. The shared database, attached as KXComun, gets the tax identities that it does not have yet.
void loadDemo(const Database& database);

}  // namespace FendaMaestros::sqlite
