#pragma once

#include <set>
#include <string>
#include <string_view>

#include "platform/postgres/Connection.h"

namespace FendaMaestros::postgres {

/// The transaction of a connection, with the transactions inside it, and all statements in it and outside.
///
/// Transactions are serializable. What begins them and guards their statements travels ahead of the next statement, so
/// that each statement is one trip. A statement that fails goes back to the savepoint that stands behind the last
/// write; the reads behind it share that savepoint, and are read-only to the server too.
class ServerTransaction {
public:
    /// `patience`: with the server while a transaction is open.
    ServerTransaction(Connection& connection, Patience patience) : connection_(connection), patience_(patience) {}

    bool isOpen() const { return depth_ > 0; }
    void begin();
    /// Errors as ConexionBd::CommitTrans. When the server is lost meanwhile, it is asked on a new connection what has
    /// become of the transaction.
    void commit();
    void rollback();

    /// Carries out steps that read, in the transaction if one is open, and gives their results.
    std::vector<Result> read(const Trip& steps);
    /// As read(); the rows of the last step go to the watch. False when the watch has stopped the read.
    bool read(const Trip& steps, const RowWatch& watch);
    /// Carries out steps of which the last one writes, and gives their results. Needs an open transaction.
    std::vector<Result> write(const Trip& steps);
    /// As write(), together with a later statement: a failure is told by that one and undoes the whole transaction.
    void writeLater(Step step);
    /// Goes ahead of the commit.
    void beforeCommit(const std::string& sql) { beforeCommit_.insert(sql); }

private:
    /// What the newest savepoint is good for.
    enum class Savepoint {
        Written,   ///< a write stands behind it
        Fresh,     ///< nothing stands behind it
        ReadOnly,  ///< reads stand behind it, and it admits nothing else
    };
    enum class Outcome { Kept, Undone, Unknown };

    template <class Exchange>
    std::vector<Result> carryOut(const Trip& steps, Savepoint needed, Exchange&& exchange);
    Trip guarded(const Trip& steps, Savepoint needed) const;
    void goBack();
    void reset();
    std::string level() const { return "level" + std::to_string(depth_); }
    Outcome outcome(const std::string& mark);

    Connection& connection_;
    Patience patience_;
    int depth_ = 0;
    /// The server knows of the transaction.
    bool begun_ = false;
    /// The server has undone it.
    bool undone_ = false;
    Savepoint savepoint_ = Savepoint::Fresh;
    /// What goes ahead of the next statement.
    Trip ahead_;
    /// Of the writes among those, with their values; 0 when there is none.
    std::size_t valuesAhead_ = 0;
    /// What the commit takes along.
    std::set<std::string> beforeCommit_;
    /// By which the server knows a transaction that has written.
    std::string number_;
};

}  // namespace FendaMaestros::postgres
