#pragma once

#include <memory>
#include <utility>

#include "session/ConexionBd.h"
#include "session/ErrorBd.h"

namespace FendaMaestros::testing {

/// A connection whose n-th statement from now on (reads, writes, begins and commits count; from 1) throws ErrorBd, of
/// kind Other unless another one is asked for, with the sentence "Fallo provocado". Statements before and behind it go
/// through. Rollbacks are never failed.
class FailingConexion : public ConexionBd {
public:
    explicit FailingConexion(std::shared_ptr<ConexionBd> connection) : connection_(std::move(connection)) {}

    /// 0 fails nothing.
    void failAt(int n, ErrorBd::Kind kind = ErrorBd::Kind::Other) {
        kind_ = kind;
        countdown_ = n;
        seen_ = 0;
    }
    /// Statements seen since the last failAt().
    int seen() const { return seen_; }

    std::shared_ptr<Recordset> Execute(std::string_view sql) override {
        count();
        return connection_->Execute(sql);
    }
    std::int64_t run(const Statement& statement) override {
        count();
        return connection_->run(statement);
    }
    void BeginTrans() override {
        count();
        connection_->BeginTrans();
    }
    void CommitTrans() override {
        count();
        connection_->CommitTrans();
    }
    void RollbackTrans() override { connection_->RollbackTrans(); }

private:
    void count() {
        ++seen_;
        if (seen_ == countdown_) throw ErrorBd(kind_, "Fallo provocado");
    }

    std::shared_ptr<ConexionBd> connection_;
    ErrorBd::Kind kind_ = ErrorBd::Kind::Other;
    int countdown_ = 0;
    int seen_ = 0;
};

}  // namespace FendaMaestros::testing
