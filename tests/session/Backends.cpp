#include "SessionContract.h"
#include "TemporaryFolder.h"
#include "platform/sqlite/DataFolder.h"
#include "platform/sqlite/Session.h"
#ifdef FENDA_WITH_POSTGRES
#include "tests/support/PreparedServer.h"
#endif

namespace FendaMaestros::tests {

namespace {

struct SqliteCompanies {
    explicit SqliteCompanies(std::chrono::milliseconds wait) : data(folder.path() / "datos", wait) {}

    TemporaryFolder folder;
    sqlite::DataFolder data;
};

std::shared_ptr<Companies> sqliteCompanies(std::chrono::milliseconds wait) {
    const auto made = std::make_shared<SqliteCompanies>(wait);
    return {made, &made->data};
}

#ifdef FENDA_WITH_POSTGRES

/// One server for all cases.
EmptyCompanies& onServer() {
    static EmptyCompanies made;
    return made;
}

std::shared_ptr<ConexionBd> postgresConnection() { return onServer().open(); }

std::shared_ptr<Companies> postgresCompanies(std::chrono::milliseconds wait) {
    return std::make_shared<postgres::Server>(onServer().fresh(), wait);
}

TEST(PostgresServer, IsInstalledForTheContracts) {
    if (!PostgresServer::installed()) GTEST_SKIP() << "PostgreSQL is not installed";
}

#endif

}  // namespace

std::vector<Backend> backends() {
    std::vector<Backend> built{{"Sqlite", sqlite::openMemory, sqliteCompanies}};
#ifdef FENDA_WITH_POSTGRES
    if (PostgresServer::installed()) built.push_back({"Postgres", postgresConnection, postgresCompanies});
#endif
    return built;
}

Backend reference() { return backends().front(); }

}  // namespace FendaMaestros::tests
