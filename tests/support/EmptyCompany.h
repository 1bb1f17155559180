#pragma once

#include <cstdlib>
#include <memory>

#include "platform/sqlite/Session.h"
#ifdef FENDA_WITH_POSTGRES
#include "tests/support/PreparedServer.h"
#endif

namespace FendaMaestros::testing {

/// A company with all its tables, empty: in memory or, where FENDA_TESTS_ON_SERVER is set, on a server of the tests'
/// own.
inline std::shared_ptr<ConexionBd> emptyCompany() {
#ifdef FENDA_WITH_POSTGRES
    if (std::getenv("FENDA_TESTS_ON_SERVER") && tests::PostgresServer::installed()) {
        static tests::EmptyCompanies server;
        return server.open();
    }
#endif
    return sqlite::openMemory();
}

}  // namespace FendaMaestros::testing
