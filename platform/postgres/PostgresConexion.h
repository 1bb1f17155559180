#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/postgres/Connection.h"
#include "platform/postgres/ServerTransaction.h"
#include "platform/postgres/Statements.h"
#include "session/ConexionBd.h"
#include "storage/TextScan.h"

namespace FendaMaestros::postgres {

/// A company on a server, as the schema that the connection looks for tables in first, and the shared data beside it.
class PostgresConexion final : public ConexionBd {
public:
    /// When writes are carried out: one by one, or many together. Then run() counts no rows, and a failure may be told
    /// by a later statement or the commit; for a company that is being filled.
    enum class Writes { Answered, Together };

    /// `patience`: with the server while a transaction is open.
    PostgresConexion(std::unique_ptr<Connection> connection, Patience patience, Writes writes = Writes::Answered)
        : connection_(std::move(connection)), transaction_(*connection_, patience), writes_(writes) {}

    std::shared_ptr<Recordset> Execute(std::string_view sql) override;
    void watchReads(ReadWatch watch) override;
    void stopWhen(StopWatch asked) override { connection_->stopWhen(std::move(asked)); }
    std::int64_t run(const Statement& statement) override;
    void BeginTrans() override { transaction_.begin(); }
    void CommitTrans() override { transaction_.commit(); }
    void RollbackTrans() override { transaction_.rollback(); }

    /// Carries out commands of the engine in the transaction that is open, and gives their results.
    std::vector<Result> carryOut(const Trip& commands) { return transaction_.write(commands); }

private:
    std::shared_ptr<Recordset> ask(std::string_view sql);
    PreparedText& reader();
    PreparedText& writer(const std::string& sql);
    std::shared_ptr<Recordset> read(PreparedText& text, std::string_view sql, const Parameters& parameters);
    std::int64_t write(PreparedText& text, const std::vector<Variant>& values);
    /// Carries out `use(text)`; once more when the server turns out not to know the text.
    template <class Use>
    auto withText(PreparedText& text, Use&& use);

    std::unique_ptr<Connection> connection_;
    ServerTransaction transaction_;
    Writes writes_;
    Statements statements_;
    storage::Shape shape_;
    ReadWatch watch_;
    /// What the reads that are watched have given, by their texts: a series of look-ups asks for the same again and
    /// again, and each would be a trip.
    std::unordered_map<std::string, Recordset> answers_;
};

}  // namespace FendaMaestros::postgres
