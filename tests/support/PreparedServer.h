#pragma once

#include <memory>
#include <string>

#include "platform/postgres/Server.h"
#include "session/SesionBd.h"
#include "tests/support/PostgresServer.h"

namespace FendaMaestros::tests {

/// A server with a database "preparada", which is ready for companies, and copies of it for the cases.
class PreparedServer {
public:
    explicit PreparedServer(PostgresServer::Disk disk = PostgresServer::Disk::NotAwaited) : server(disk) {
        postgres::Server(server.create(prepared)).prepare();
    }

    /// A database of its own, the copy of another one that nobody is connected to; gives its connection string. A copy
    /// has rights of its own, which do not come with it.
    std::string create(const std::string& database, const std::string& like = prepared) const {
        const auto connection = server.create(database, like);
        server.execute(database, {"GRANT CREATE ON DATABASE " + database + " TO fenda_gestor"});
        return connection;
    }
    /// As create(), with a name of its own.
    std::string fresh(const std::string& like = prepared) { return create("caso" + std::to_string(++count_), like); }

    PostgresServer server;

private:
    static constexpr const char* prepared = "preparada";
    int count_ = 0;
};

/// A prepared server with companies that have all their tables, empty, each in a database of its own.
class EmptyCompanies : public PreparedServer {
public:
    EmptyCompanies() {
        postgres::Server(create(empty)).receive(company, [](ConexionBd&) {});
        server.execute(empty, {"DO $$ DECLARE filled regclass; BEGIN FOR filled IN SELECT oid FROM pg_class WHERE "
                               "relkind = 'r' AND relnamespace = 'kxcomun'::regnamespace LOOP EXECUTE "
                               "format('TRUNCATE %s RESTART IDENTITY', filled); END LOOP; END $$"});
    }
    std::shared_ptr<ConexionBd> open() { return postgres::Server(fresh(empty)).open(company)->Conexion(); }

private:
    static constexpr const char *empty = "vacia", *company = "Vacía";
};

}  // namespace FendaMaestros::tests
