#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "session/SesionBd.h"

namespace FendaMaestros {

/// Takes one line of a trace.
using TraceSink = std::function<void(std::string_view line)>;

/// A connection that says every text and every transaction step to `sink`, in order, before it happens.
std::shared_ptr<ConexionBd> traced(std::shared_ptr<ConexionBd> connection, TraceSink sink);

/// A session that says every call of its write builder to `sink`; its connection is traced too. Both arguments are
/// kept.
std::unique_ptr<SesionBd> traced(std::unique_ptr<SesionBd> session, TraceSink sink);

/// A connection whose n-th statement from now on (reads, writes, begins and commits count; from 1) throws ErrorBd of
/// kind Other with the sentence "Fallo provocado". Statements before and behind it go through. Rollbacks are never
/// failed.
class FailingConexion : public ConexionBd {
public:
    explicit FailingConexion(std::shared_ptr<ConexionBd> connection) : connection_(std::move(connection)) {}

    /// 0 fails nothing.
    void failAt(int n) {
        countdown_ = n;
        seen_ = 0;
    }
    /// Statements seen since the last failAt().
    int seen() const { return seen_; }

    std::shared_ptr<Recordset> Execute(std::string_view sql) override;
    std::int64_t run(const Statement& statement) override;
    void BeginTrans() override;
    void CommitTrans() override;
    void RollbackTrans() override;

private:
    void count();

    std::shared_ptr<ConexionBd> connection_;
    int countdown_ = 0;
    int seen_ = 0;
};

}  // namespace FendaMaestros
