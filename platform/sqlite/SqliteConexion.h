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
    void watchReads(ReadWatch watch) override;
    void stopWhen(StopWatch asked) override;
    std::int64_t run(const Statement& statement) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;

    const Database& database() const { return database_; }

private:
    /// What the statements being prepared may do.
    enum class Permission { Everything, Read, Write };
    class Permitting;
    class Reading;

    static int authorize(void* self, int action, const char*, const char*, const char*, const char*);
    /// Asked by the engine while a statement runs: not 0 stops it.
    static int mayGoOn(void* self);
    /// Asked by the engine when another program holds a file: 0 gives up.
    static int waitOn(void* self, int tries);
    void attend();
    bool isToStop() const { return stopAsked_ && stopAsked_(); }
    /// Goes on to the next row; false behind the last one, and where the watch has stopped the read.
    bool step(sqlite3_stmt* statement) const;
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
    StopWatch stopAsked_;
    const Recordset* reading_ = nullptr;  ///< what is being read
    bool readStopped_ = false;
    std::chrono::steady_clock::time_point waitingSince_;
};

}  // namespace FendaMaestros::sqlite
