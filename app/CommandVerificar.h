#pragma once

#include <string>

#include "app/Place.h"

namespace FendaMaestros {

/// What `fenda verificar` was asked for; neither check means both.
struct VerificarOptions {
    bool plan = false;         ///< sub-accounts that hang from no account of the official plan
    bool subaccounts = false;  ///< sub-accounts whose code is repeated or of another length
    bool json = false;
};

/// `fenda verificar`: checks the chart and writes a line for each account found: code, description and what is wrong,
/// with tabs in between. Changes nothing. Returns 0 when nothing has been found, else 1. Throws std::exception, in
/// Spanish.
int runVerificar(const Place& place, const std::string& company, const VerificarOptions& options);

}  // namespace FendaMaestros
