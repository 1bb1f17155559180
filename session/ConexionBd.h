#pragma once

#include <cstdint>
#include <functional>
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
/// engine's dialect. Every failure is an ErrorBd. One thread, one statement at a time.
///
/// What the screens rely on, whatever the engine:
/// - Texts are UTF-8 without zero bytes, a literal 'ñ' needs no mark of its own. They compare and sort as in Spanish:
///   case and blanks at the end do not count, accents do; a null comes before every value.
/// - Identities rise: a row that is inserted without one gets an identity above those of all rows that have ever been
///   kept. Inside a transaction SELECT MAX(id) behind an insert is therefore the row just inserted; gaps may stay.
/// - What a transaction has read stays true until it ends: nobody else changes, deletes or adds what would alter that
///   read. Where two transactions cannot both be kept so, one of them fails with ErrorBd (Busy), in a statement or in
///   its commit, and is to be rolled back.
/// - A transaction covers both databases and is kept whole or not at all, through a crash too. Outside of one, each
///   write is kept by itself. Readers see what is kept, and of their own transaction also what is not yet.
class ConexionBd {
public:
    virtual ~ConexionBd() = default;

    /// Runs one text that reads, and nothing else: a text that could write, returns no columns or goes on behind its
    /// end is refused (ErrorBd::Kind::Refused); so is a + that would join numbers, Refused or Sql. Never null.
    virtual std::shared_ptr<Recordset> Execute(std::string_view sql) = 0;

    /// Asked now and then while a read runs, with the rows read so far; false stops the read.
    using ReadWatch = std::function<bool(int rows)>;
    /// Watches the reads from now on; an empty watch ends it. A read that is stopped gives the rows read so far, and
    /// its recordset says that it is Partial. An adapter that cannot stop a read never asks. What is watched is one
    /// work: outside a transaction, an adapter may answer a text that was read in it already as it did then.
    virtual void watchReads(ReadWatch /*watch*/) {}

    /// Asked now and then while a statement runs or waits for another program; true stops it, and it fails (Stopped).
    using StopWatch = std::function<bool()>;
    /// Who may stop statements from now on; nobody when it is empty. An adapter that cannot stop a statement never
    /// asks.
    virtual void stopWhen(StopWatch /*asked*/) {}

    /// Runs one INSERT, UPDATE or DELETE composed by the session, and returns how many rows it touched. A text that
    /// goes into a column of numbers is stored as the number it spells. Waits a while for another program before it
    /// fails (Busy). A statement that fails, here or in Execute, changes nothing and leaves the transaction open; only
    /// what leaves the engine without disk, memory or server may undo all of it, and then every read, write, begin and
    /// commit fails until the outermost RollbackTrans, so that nothing of it is written on its own.
    virtual std::int64_t run(const Statement& statement) = 0;

    /// Transactions nest: an inner one that is rolled back undoes its own part, and only the outermost commit keeps.
    virtual void BeginTrans() = 0;
    /// Throws ErrorBd (Refused) when none is open. One that fails keeps nothing, and is to be rolled back.
    virtual void CommitTrans() = 0;
    /// Does nothing when none is open, so that an error path may always call it.
    virtual void RollbackTrans() = 0;
};

}  // namespace FendaMaestros
