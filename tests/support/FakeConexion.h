#pragma once

#include <string>
#include <vector>

#include "session/ConexionBd.h"

namespace FendaMaestros::testing {

/// A connection without a database: every read gives the same rows, and what it was asked to do is written down.
class FakeConexion final : public ConexionBd {
public:
    std::shared_ptr<Recordset> rows = std::make_shared<Recordset>(std::vector<std::string>{"Id"});
    std::vector<std::string> log;
    std::vector<Variant> parameters;

    std::shared_ptr<Recordset> Execute(std::string_view sql) override {
        log.emplace_back(sql);
        return rows;
    }
    std::int64_t run(const Statement& statement) override {
        log.push_back(statement.sql);
        parameters = statement.parameters;
        return 1;
    }
    void BeginTrans() override { log.emplace_back("begin"); }
    void CommitTrans() override { log.emplace_back("commit"); }
    void RollbackTrans() override { log.emplace_back("rollback"); }
};

}  // namespace FendaMaestros::testing
