#include "platform/sqlite/Session.h"

#include "platform/sqlite/Schema.h"
#include "platform/sqlite/SqliteConexion.h"

namespace FendaMaestros::sqlite {

std::shared_ptr<ConexionBd> openMemory() {
    auto connection = std::make_shared<SqliteConexion>(Database(), "");
    createSchema(connection->database(), "main", Contents::Company);
    createSchema(connection->database(), "KXComun", Contents::Shared);
    return connection;
}

}  // namespace FendaMaestros::sqlite
