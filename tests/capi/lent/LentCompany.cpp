#include "tests/capi/lent/LentCompany.h"

#include "include/fenda_contrato.h"

using FendaMaestros::tests::LentCompany;

namespace {

#ifdef FENDA_FAULT
constexpr bool faulty = true;
#else
constexpr bool faulty = false;
#endif

fenda_status emptyCompany(void*, fenda_connection* connection) {
    *connection = LentCompany::lend(new LentCompany{.forgetsRollback = faulty});
    return FENDA_OK;
}

const fenda_contract_host host{sizeof(fenda_contract_host), nullptr, emptyCompany, nullptr};

}  // namespace

const fenda_contract_host* fenda_contract_of_host(void) { return &host; }

extern "C" fenda_connection fenda_lent_company(bool* released) {
    return LentCompany::lend(new LentCompany{.released = released});
}
