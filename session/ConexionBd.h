#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "session/Recordset.h"

namespace FendaMaestros {

/// A write with its values apart: each "?" of the text takes the parameter of its position.
struct Statement {
    std::string sql;
    std::vector<Variant> parameters;
};

/// The open connection to one company and the shared database. The tables of the company are named bare, those of the
/// shared one behind "KXComun.dbo." in any case. Texts are those of the screens: each adapter brings them into its
/// engine's dialect. One thread, one statement at a time. Every failure is an ErrorBd.
class ConexionBd {
public:
    virtual ~ConexionBd() = default;

    /// Runs one text that reads, and nothing else: a text that could write, returns no columns or goes on behind its
    /// end is refused (ErrorBd::Kind::Refused). Never null.
    virtual std::shared_ptr<Recordset> Execute(std::string_view sql) = 0;

    /// Runs one INSERT, UPDATE or DELETE composed by the session, and returns how many rows it touched.
    virtual std::int64_t run(const Statement& statement) = 0;

    /// Transactions nest: an inner one that is rolled back undoes its own part, and only the outermost commit keeps.
    virtual void BeginTrans() = 0;
    /// Throws ErrorBd (Refused) when none is open.
    virtual void CommitTrans() = 0;
    /// Does nothing when none is open, so that an error path may always call it.
    virtual void RollbackTrans() = 0;
};

}  // namespace FendaMaestros
