#pragma once

#include <chrono>
#include <exception>
#include <memory>

#include "session/ConexionBd.h"
#include "session/ErrorBd.h"
#include "toolkit/Desktop.h"

namespace FendaMaestros {

/// A transaction that ends with its scope: rolled back unless it has been committed. A roll-back that fails is not
/// told, since what made it necessary is on its way to the caller.
class Transaction {
public:
    /// Errors as BeginTrans; then nothing is rolled back.
    explicit Transaction(std::shared_ptr<ConexionBd> connection) : connection_(std::move(connection)) {
        connection_->BeginTrans();
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    ~Transaction() {
        if (!open_) return;
        try {
            connection_->RollbackTrans();
        } catch (const std::exception&) {
        }
    }

    /// Errors as CommitTrans; then the scope's end still rolls back.
    void commit() {
        connection_->CommitTrans();
        open_ = false;
    }

private:
    std::shared_ptr<ConexionBd> connection_;
    bool open_ = true;
};

/// Carries out a save, its transactions included, and again while another program keeps the data busy, for five seconds
/// at most by the clock of the desktop: an engine may turn away at once, instead of letting it wait, a transaction that
/// reads before it writes.
template <class Save>
auto withPatience(Desktop& desktop, Save&& save) {
    constexpr std::chrono::seconds patience(5);
    constexpr std::chrono::milliseconds breath(10);
    const auto end = desktop.now() + patience;
    for (;;) {
        try {
            return save();
        } catch (const ErrorBd& error) {
            if (error.kind() != ErrorBd::Kind::Busy || desktop.now() >= end) throw;
        }
        desktop.wait(breath);
    }
}

}  // namespace FendaMaestros
