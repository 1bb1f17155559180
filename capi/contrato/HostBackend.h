#pragma once

#include "include/fenda_contrato.h"

namespace FendaMaestros::tests {

/// From now on backends() is this host, which must outlive the run; null for none.
void tryHost(const fenda_contract_host* host);

}  // namespace FendaMaestros::tests
