#include "platform/postgres/ServerTransaction.h"

#include <libpq-fe.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <thread>
#include <utility>

namespace FendaMaestros::postgres {

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

/// A connection that fails sooner than this was lost before, and what has not been begun may begin again.
constexpr auto foundLost = 1s;
/// How long a lost server is asked what became of a commit.
constexpr auto askingPatience = 5s;

/// Outside a transaction a read may take as long as the server works on it.
constexpr Patience readPatience{.silence = 5s, .whileAtWork = true};

constexpr std::string_view savepoint = "statement";

void append(Trip& trip, std::initializer_list<std::string> commands) {
    for (const auto& sql : commands) trip.push_back(command(sql));
}

std::string set(std::string_view name) { return "SAVEPOINT " + std::string(name); }
std::string release(std::string_view name) { return "RELEASE " + std::string(name); }
std::string rollBackTo(std::string_view name) { return "ROLLBACK TO " + std::string(name); }

std::string textOf(const Result& result) {
    return PQntuples(result.get()) == 0 ? std::string() : PQgetvalue(result.get(), 0, 0);
}

/// No two are the same.
std::string newMark() {
    std::random_device random;
    std::string mark;
    char digits[9];
    for (int part = 0; part < 4; ++part) {
        std::snprintf(digits, sizeof digits, "%08x", random());
        mark += digits;
    }
    return mark;
}

ErrorBd alreadyUndone() { return {ErrorBd::Kind::Other, "La transacción ya se había deshecho por un error anterior."}; }

}  // namespace

void ServerTransaction::begin() {
    if (undone_) throw alreadyUndone();
    // The first read decides whether the server keeps watch over what the transaction reads: one that is read-only then
    // it need not watch, though it may write later on.
    constexpr const char* read = "SELECT";
    if (depth_ == 0)
        append(ahead_, {"BEGIN ISOLATION LEVEL SERIALIZABLE READ WRITE", read, set(savepoint)});
    else
        append(ahead_, {release(savepoint), set(level()), set(savepoint)});
    savepoint_ = Savepoint::Fresh;
    ++depth_;
}

void ServerTransaction::commit() {
    if (depth_ == 0) throw ErrorBd(ErrorBd::Kind::Refused, "No hay ninguna transacción abierta.");
    if (undone_) throw alreadyUndone();
    if (depth_ > 1) {
        --depth_;
        append(ahead_, {release(level()), set(savepoint)});
        savepoint_ = Savepoint::Fresh;
        return;
    }
    if (valuesAhead_ > 0) write({});
    if (!begun_) return reset();
    Trip trip = std::exchange(ahead_, {});
    for (const auto& sql : beforeCommit_) trip.push_back(command(sql));
    const std::string mark = number_.empty() ? std::string() : newMark();
    if (!mark.empty()) {
        if (savepoint_ == Savepoint::ReadOnly) append(trip, {release(savepoint)});
        trip.push_back(command("INSERT INTO fenda.marcas (marca) VALUES ($1::uuid)", {mark}));
    }
    trip.push_back(command("COMMIT"));
    undone_ = true;  // unless what follows succeeds
    try {
        const auto results = connection_.exchange(trip, patience_);
        if (std::string_view(PQcmdStatus(results.back().get())) != "COMMIT") throw alreadyUndone();
    } catch (const ErrorBd& error) {
        if (error.kind() != ErrorBd::Kind::Lost || number_.empty()) throw;
        const auto found = outcome(mark);
        if (found == Outcome::Unknown)
            throw ErrorBd(ErrorBd::Kind::Lost,
                          "Se ha perdido la conexión con el servidor y no se sabe si lo último se ha guardado: "
                          "compruébelo antes de repetirlo.",
                          0, error.nativeText());
        if (found == Outcome::Undone) throw;
    }
    reset();
}

void ServerTransaction::rollback() {
    if (depth_ == 0) return;
    --depth_;
    if (depth_ > 0) {
        if (!undone_) append(ahead_, {rollBackTo(level()), release(level()), set(savepoint)});
        savepoint_ = Savepoint::Fresh;
        return;
    }
    const bool toUndo = begun_ && connection_.isOpen();
    reset();
    if (!toUndo) return;
    try {
        connection_.exchange({command("ROLLBACK")}, patience_);
    } catch (const ErrorBd&) {
        connection_.drop();  // which undoes it as well
    }
}

std::vector<Result> ServerTransaction::read(const Trip& steps) {
    return carryOut(steps, Savepoint::ReadOnly, [this](const Trip& trip) {
        return connection_.exchange(trip, isOpen() ? patience_ : readPatience);
    });
}

bool ServerTransaction::read(const Trip& steps, const RowWatch& watch) {
    bool finished = true;
    carryOut(steps, Savepoint::ReadOnly, [&](const Trip& trip) {
        finished = connection_.exchange(trip, readPatience, watch);
        return std::vector<Result>(trip.size());
    });
    return finished;
}

std::vector<Result> ServerTransaction::write(const Trip& steps) {
    Trip trip = steps;
    if (number_.empty()) trip.push_back(command("SELECT pg_current_xact_id()"));
    auto results =
        carryOut(trip, Savepoint::Written, [this](const Trip& all) { return connection_.exchange(all, patience_); });
    if (number_.empty()) {
        number_ = textOf(results.back());
        results.pop_back();
    }
    return results;
}

void ServerTransaction::writeLater(Step step) {
    constexpr std::size_t mostValues = 20000;
    if (savepoint_ == Savepoint::ReadOnly) append(ahead_, {release(savepoint), set(savepoint)});
    valuesAhead_ += step.parameters.size() + 1;
    ahead_.push_back(std::move(step));
    savepoint_ = Savepoint::Written;
    if (valuesAhead_ > mostValues) write({});
}

/// Sends steps behind what goes ahead of them, and keeps account of what the server has made of them.
template <class Exchange>
std::vector<Result> ServerTransaction::carryOut(const Trip& steps, Savepoint needed, Exchange&& exchange) {
    if (undone_ || (begun_ && !connection_.isOpen())) throw alreadyUndone();
    const Trip trip = isOpen() ? guarded(steps, needed) : steps;
    for (bool again = true;; again = false) {
        const bool fresh = !connection_.isOpen();
        const auto start = Clock::now();
        try {
            connection_.require();
            auto results = exchange(trip);
            begun_ = isOpen();
            ahead_.clear();
            valuesAhead_ = 0;
            savepoint_ = needed;
            if (connection_.hasFailed()) goBack();
            results.erase(results.begin(), results.end() - static_cast<std::ptrdiff_t>(steps.size()));
            return results;
        } catch (const ErrorBd& error) {
            if (connection_.hasFailed()) goBack();
            if (error.kind() != ErrorBd::Kind::Lost) throw;
            undone_ = begun_;
            if (begun_ || fresh || !again || Clock::now() - start > foundLost) throw;
        } catch (...) {
            if (connection_.hasFailed()) goBack();
            throw;
        }
    }
}

Trip ServerTransaction::guarded(const Trip& steps, Savepoint needed) const {
    Trip trip = ahead_;
    const bool goodAsItIs = savepoint_ == Savepoint::Fresh || (savepoint_ == needed && needed == Savepoint::ReadOnly);
    if (!goodAsItIs) append(trip, {release(savepoint), set(savepoint)});
    if (needed == Savepoint::ReadOnly && savepoint_ != Savepoint::ReadOnly) append(trip, {"SET TRANSACTION READ ONLY"});
    trip.insert(trip.end(), steps.begin(), steps.end());
    return trip;
}

/// The last statement has failed, and nothing else has been done behind the savepoint.
void ServerTransaction::goBack() {
    begun_ = true;
    undone_ = undone_ || valuesAhead_ > 0;
    ahead_ = {command(rollBackTo(savepoint))};
    savepoint_ = Savepoint::Fresh;
}

void ServerTransaction::reset() {
    depth_ = 0;
    begun_ = undone_ = false;
    ahead_.clear();
    valuesAhead_ = 0;
    beforeCommit_.clear();
    number_.clear();
}

/// What has become of a transaction whose commit the server did not answer. Its number tells whether it still goes on,
/// and its mark whether it has been kept: behind a crash, the number may be that of a later one.
ServerTransaction::Outcome ServerTransaction::outcome(const std::string& mark) {
    constexpr auto breath = 100ms;
    for (const auto end = Clock::now() + askingPatience; Clock::now() < end; std::this_thread::sleep_for(breath)) {
        try {
            connection_.require();
            const auto results =
                connection_.exchange({command("SELECT pg_xact_status($1::xid8)", {number_}),
                                      command("SELECT marca FROM fenda.marcas WHERE marca = $1::uuid", {mark})},
                                     readPatience);
            const auto status = textOf(results.front());
            if (!textOf(results.back()).empty()) return Outcome::Kept;
            if (status == "committed" || status == "aborted") return Outcome::Undone;
        } catch (const ServerError& error) {
            constexpr std::string_view stillToCome = "22023";
            return error.state() == stillToCome ? Outcome::Undone : Outcome::Unknown;
        } catch (const ErrorBd&) {
            continue;
        }
    }
    return Outcome::Unknown;
}

}  // namespace FendaMaestros::postgres
