#pragma once

#include "platform/sqlite/Database.h"
#include "platform/sqlite/StatementCache.h"
#include "session/ConexionBd.h"
#include "storage/TextScan.h"

namespace FendaMaestros::sqlite {

/// The connection to one company, with the shared database attached as KXComun.
class SqliteConexion final : public ConexionBd {
public:
    /// Takes a company's database over. `shared` is the file of the shared database, empty for one in memory.
    SqliteConexion(Database company, const std::filesystem::path& shared);
    SqliteConexion(const SqliteConexion&) = delete;
    SqliteConexion& operator=(const SqliteConexion&) = delete;

    std::shared_ptr<Recordset> Execute(std::string_view sql) override;
    void watchReads(ReadWatch watch) override { watch_ = std::move(watch); }
    std::int64_t run(const Statement& statement) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;

    const Database& database() const { return database_; }

private:
    /// What the statements being prepared may do.
    enum class Permission { Everything, Read, Write };
    class Permitting;

    static int authorize(void* self, int action, const char*, const char*, const char*, const char*);
    CachedStatement& reader(std::string_view sql);
    CachedStatement& writer(const std::string& sql);
    /// Throws when an error has undone the transaction that the caller still takes for open.
    void requireTransaction() const;

    Database database_;
    StatementCache readers_, writers_;
    storage::Shape shape_;
    Permission permission_ = Permission::Everything;
    int depth_ = 0;
    ReadWatch watch_;
};

}  // namespace FendaMaestros::sqlite
