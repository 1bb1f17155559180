#pragma once

#include <exception>
#include <memory>

#include "session/ConexionBd.h"

namespace FendaMaestros {

/// A transaction that ends with its scope: rolled back unless it has been committed. A roll-back that fails is not
/// told, since what made it necessary is on its way to the caller.
class Transaccion {
public:
    /// Errors as BeginTrans; then nothing is rolled back.
    explicit Transaccion(std::shared_ptr<ConexionBd> connection) : connection_(std::move(connection)) {
        connection_->BeginTrans();
    }
    Transaccion(const Transaccion&) = delete;
    Transaccion& operator=(const Transaccion&) = delete;
    ~Transaccion() {
        if (!open_) return;
        try {
            connection_->RollbackTrans();
        } catch (const std::exception&) {
        }
    }

    /// Errors as CommitTrans; then the scope's end still rolls back.
    void confirmar() {
        connection_->CommitTrans();
        open_ = false;
    }

private:
    std::shared_ptr<ConexionBd> connection_;
    bool open_ = true;
};

}  // namespace FendaMaestros
