#include "platform/postgres/Connection.h"

#include <libpq-fe.h>
#include <poll.h>

#include <array>
#include <cerrno>
#include <exception>
#include <optional>

namespace FendaMaestros::postgres {

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

/// Between two questions whether a watched read is to go on.
constexpr std::chrono::milliseconds breath = 20ms;

/// What the person's own connection string says comes before these. A network that has died is found out in seconds.
constexpr std::pair<const char*, const char*> defaults[] = {
    {"connect_timeout", "4"},  {"keepalives_idle", "10"},    {"keepalives_interval", "3"},
    {"keepalives_count", "3"}, {"tcp_user_timeout", "5000"}, {"fallback_application_name", "fenda"},
};

ErrorBd unreachable(const std::string& text) {
    const auto line = text.substr(0, text.find('\n'));
    return {ErrorBd::Kind::Lost, "No se puede conectar con el servidor: " + line, 0, text};
}

void ignoreNotice(void*, const PGresult*) {}

bool isSuccess(const PGresult* result) {
    const auto status = PQresultStatus(result);
    return status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK || status == PGRES_SINGLE_TUPLE;
}

/// The server has stopped the statement, as it was told.
bool isCancelled(const ServerError& error) { return error.state() == "57014"; }

}  // namespace

void ClearResult::operator()(PGresult* result) const { PQclear(result); }
void Connection::Finish::operator()(PGconn* connection) const { PQfinish(connection); }

/// Waiting for one trip.
struct Connection::Waiting {
    enum class End { None, EnoughRead, StopAsked, Thrown };

    Patience patience;
    /// Null for a trip that nobody watches.
    const RowWatch* watch = nullptr;
    /// Why the server has been told to stop.
    End end = End::None;
    /// What a listener has thrown.
    std::exception_ptr thrown = nullptr;
    Clock::time_point heard = Clock::now();
};

void Connection::require() {
    if (handle_) return;
    handle_ = connect();
    Trip trip;
    for (const auto& sql : session_) trip.push_back(command(sql));
    try {
        exchange(trip, {.silence = 5s});
    } catch (...) {
        drop();
        throw;
    }
}

Connection::Handle Connection::connect() const {
    std::vector<const char*> keywords, values;
    const auto add = [&](const char* keyword, const char* value) {
        keywords.push_back(keyword);
        values.push_back(value);
    };
    for (const auto& [keyword, value] : defaults) add(keyword, value);
    add("dbname", target_.c_str());
    add("client_encoding", "UTF8");
    add(nullptr, nullptr);
    constexpr int expandTarget = 1;
    Handle handle(PQconnectdbParams(keywords.data(), values.data(), expandTarget));
    if (!handle) throw ErrorBd(ErrorBd::Kind::Other, "No queda memoria para la operación.");
    if (PQstatus(handle.get()) != CONNECTION_OK) throw unreachable(PQerrorMessage(handle.get()));
    PQsetNoticeReceiver(handle.get(), ignoreNotice, nullptr);
    PQsetnonblocking(handle.get(), 1);
    PQenterPipelineMode(handle.get());
    return handle;
}

void Connection::addSessionCommand(const std::string& sql) {
    session_.push_back(sql);
    if (isOpen()) exchange({command(sql)}, {.silence = 5s});
}

bool Connection::hasFailed() const { return handle_ && PQtransactionStatus(handle_.get()) == PQTRANS_INERROR; }

std::vector<Result> Connection::exchange(const Trip& trip, Patience patience) {
    Waiting waiting{.patience = patience};
    std::vector<Result> results(trip.size());
    carryOut(trip, waiting, [&](std::size_t step, Result result) { results[step] = std::move(result); });
    return results;
}

bool Connection::exchange(const Trip& trip, Patience patience, const RowWatch& watch) {
    watch.begin();
    Waiting waiting{.patience = patience, .watch = &watch};
    carryOut(trip, waiting, [&](std::size_t step, Result result) {
        if (step + 1 < trip.size()) return;
        listen(waiting, [&] {
            if (!watch.goOn()) return Waiting::End::EnoughRead;
            watch.take(result.get());
            return Waiting::End::None;
        });
    });
    return waiting.end != Waiting::End::EnoughRead;
}

void Connection::carryOut(const Trip& trip, Waiting& waiting, const TakeResult& take) {
    for (const auto& step : trip) send(step);
    if (!PQpipelineSync(handle_.get())) fail(PQerrorMessage(handle_.get()));
    std::optional<ServerError> failure;
    for (std::size_t step = 0; step < trip.size(); ++step) {
        if (waiting.watch && step + 1 == trip.size()) PQsetSingleRowMode(handle_.get());
        while (auto result = next(waiting)) {
            if (PQresultStatus(result.get()) == PGRES_PIPELINE_ABORTED) continue;
            if (isSuccess(result.get()))
                take(step, std::move(result));
            else if (!failure)
                failure = failureOf(result.get());
        }
    }
    next(waiting);  // the end of the trip
    if (waiting.thrown) std::rethrow_exception(waiting.thrown);
    if (!failure) return;
    if (!isCancelled(*failure) || waiting.end == Waiting::End::None) throw ServerError(*failure);
    if (waiting.end == Waiting::End::StopAsked) throw ErrorBd(ErrorBd::Kind::Stopped, "Se ha detenido la operación.");
}

/// Asks a listener unless the trip is to end already. All results have to be taken even then, so what it throws waits.
template <class Ask>
void Connection::listen(Waiting& waiting, Ask&& ask) {
    if (waiting.end != Waiting::End::None) return;
    try {
        waiting.end = ask();
    } catch (...) {
        waiting.end = Waiting::End::Thrown;
        waiting.thrown = std::current_exception();
    }
    if (waiting.end != Waiting::End::None) cancel();
}

ServerError Connection::failureOf(const PGresult* result) {
    ServerError error(result);
    if (PQstatus(handle_.get()) == CONNECTION_BAD) fail(PQerrorMessage(handle_.get()));
    if (error.kind() == ErrorBd::Kind::Lost) fail(error.nativeText());
    return error;
}

void Connection::send(const Step& step) {
    std::vector<const char*> values;
    values.reserve(step.parameters.size());
    for (const auto& parameter : step.parameters) values.push_back(parameter ? parameter->c_str() : nullptr);
    const int count = static_cast<int>(values.size());
    auto* connection = handle_.get();
    const auto sent = [&] {
        switch (step.kind) {
            case Step::Kind::Command:
                return PQsendQueryParams(connection, step.sql.c_str(), count, nullptr, values.data(), nullptr, nullptr,
                                         0);
            case Step::Kind::Prepare:
                return PQsendPrepare(connection, step.name.c_str(), step.sql.c_str(), 0, nullptr);
            case Step::Kind::Describe:
                return PQsendDescribePrepared(connection, step.name.c_str());
            case Step::Kind::Run:
                return PQsendQueryPrepared(connection, step.name.c_str(), count, values.data(), nullptr, nullptr, 0);
        }
        return 0;
    };
    if (!sent()) fail(PQerrorMessage(connection));
}

Result Connection::next(Waiting& waiting) {
    while (PQisBusy(handle_.get())) awaitInput(waiting);
    return Result(PQgetResult(handle_.get()));
}

void Connection::awaitInput(Waiting& waiting) {
    auto* connection = handle_.get();
    const int unsent = PQflush(connection);
    if (unsent < 0) fail(PQerrorMessage(connection));
    pollfd socket{.fd = PQsocket(connection), .events = POLLIN, .revents = 0};
    if (unsent > 0) socket.events |= POLLOUT;
    const auto limit = waiting.watch || stopAsked_ ? breath : waiting.patience.silence;
    const int ready = poll(&socket, 1, static_cast<int>(limit.count()));
    if (ready < 0 && errno != EINTR) fail("poll");
    if (ready > 0) {
        waiting.heard = Clock::now();
        if (!PQconsumeInput(connection)) fail(PQerrorMessage(connection));
        return;
    }
    listen(waiting, [&] {
        if (stopAsked_ && stopAsked_()) return Waiting::End::StopAsked;
        return waiting.watch && !waiting.watch->goOn() ? Waiting::End::EnoughRead : Waiting::End::None;
    });
    if (Clock::now() - waiting.heard < waiting.patience.silence) return;
    if (!waiting.patience.whileAtWork || !isAtWork()) fail("silence");
    waiting.heard = Clock::now();
}

void Connection::cancel() {
    std::array<char, 256> ignored{};
    auto* canceller = PQgetCancel(handle_.get());
    PQcancel(canceller, ignored.data(), static_cast<int>(ignored.size()));
    PQfreeCancel(canceller);
}

/// Asked through a connection of its own.
bool Connection::isAtWork() const {
    const auto process = std::to_string(PQbackendPID(handle_.get()));
    try {
        Connection other(target_, {});
        other.require();
        const auto results =
            other.exchange({command("SELECT 1 FROM pg_stat_activity WHERE pid = $1 AND state = 'active'", {process})},
                           {.silence = 2s});
        return PQntuples(results.front().get()) == 1;
    } catch (const ErrorBd&) {
        return false;
    }
}

void Connection::script(const std::string& sql) {
    require();
    PQexitPipelineMode(handle_.get());
    const Result result(PQexec(handle_.get(), sql.c_str()));
    if (!isSuccess(result.get())) {
        const auto failure = failureOf(result.get());
        PQenterPipelineMode(handle_.get());
        throw ServerError(failure);
    }
    PQenterPipelineMode(handle_.get());
}

void Connection::fail(const std::string& text) {
    const std::string words = text;  // which may belong to the connection
    drop();
    throw lost(words);
}

}  // namespace FendaMaestros::postgres
