#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/postgres/Failure.h"
#include "platform/postgres/Trip.h"

struct pg_conn;

namespace FendaMaestros::postgres {

/// How long the server may be silent.
struct Patience {
    std::chrono::milliseconds silence;
    /// A server that is still at work on the trip may be silent for longer.
    bool whileAtWork = false;
};

/// Looks at the rows of a read as they come.
struct RowWatch {
    /// The read begins, or begins again: what has been taken is void.
    std::function<void()> begin;
    /// Takes one row or, at the end, none.
    std::function<void(const pg_result* row)> take;
    /// Asked before each of these, and now and then while none comes; false stops the read, which is then no failure.
    std::function<bool()> goOn;
};

/// One connection to a server, made when it is first needed and again after it was lost. Every failure is an ErrorBd:
/// what the server tells is a ServerError, a server that does not answer is ErrorBd (Lost).
class Connection {
public:
    /// `target`: a connection string of libpq. `session`: the commands that every connection begins with.
    Connection(std::string target, std::vector<std::string> session)
        : target_(std::move(target)), session_(std::move(session)) {}
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Connects unless there is a connection that has not been found to be lost.
    void require();
    /// What every later connection begins with too; carried out at once on the one that is there.
    void addSessionCommand(const std::string& sql);
    /// Ends the connection; the server undoes what was open on it.
    void drop() { handle_.reset(); }

    /// Asked now and then while a trip is under way; true stops it, and it fails (ErrorBd::Kind::Stopped).
    void stopWhen(std::function<bool()> asked) { stopAsked_ = std::move(asked); }

    /// False when there is none, or it has been found to be lost.
    bool isOpen() const { return handle_ != nullptr; }
    /// Of the transaction that is open on the server: it takes no more but being rolled back.
    bool hasFailed() const;

    /// The results of the steps of a trip, one for each; throws what the first step that fails tells. The server counts
    /// as lost when it is silent for longer than `patience` or, if the trip may take long, when it is not at work then.
    std::vector<Result> exchange(const Trip& trip, Patience patience);
    /// As exchange(), for a trip whose last step is a read: its rows go to `watch` as they come. False when the watch
    /// has stopped it.
    bool exchange(const Trip& trip, Patience patience, const RowWatch& watch);
    /// Carries out commands that stand one behind the other, without parameters.
    void script(const std::string& sql);

private:
    struct Finish {
        void operator()(pg_conn* connection) const;
    };
    using Handle = std::unique_ptr<pg_conn, Finish>;
    using TakeResult = std::function<void(std::size_t step, Result result)>;

    struct Waiting;

    Handle connect() const;
    /// Sends a trip and hands over the results that are successes, a null one never. Throws what the first failure
    /// says.
    void carryOut(const Trip& trip, Waiting& waiting, const TakeResult& take);
    void send(const Step& step);
    /// The next result, waited for; null behind the last one of a step.
    Result next(Waiting& waiting);
    void awaitInput(Waiting& waiting);
    template <class Ask>
    void listen(Waiting& waiting, Ask&& ask);
    /// Tells the server to stop the statement that it is at.
    void cancel();
    /// Whether the server still works on the trip.
    bool isAtWork() const;
    /// What a result tells that is no success. Throws (Lost) when it tells that the connection is gone.
    ServerError failureOf(const pg_result* result);
    [[noreturn]] void fail(const std::string& text);

    std::string target_;
    std::vector<std::string> session_;
    std::function<bool()> stopAsked_;
    Handle handle_;
};

}  // namespace FendaMaestros::postgres
