#pragma once

#include <string>

#include "platform/postgres/Server.h"
#include "tests/support/PostgresServer.h"

namespace FendaMaestros::tests {

/// A server with a database "preparada", which is ready for companies, and copies of it for the cases.
class PreparedServer {
public:
    PreparedServer() { postgres::Server(server.create(prepared)).prepare(); }

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

}  // namespace FendaMaestros::tests
