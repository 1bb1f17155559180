#pragma once

#include <optional>

#include "ui/Transaction.h"

namespace FendaMaestros {

class WorkContext;

/// The unit of work of an account's save: a transaction on MyBd and another on MyBdorigen, committed and rolled back in
/// that order. On one connection they nest, and the second commit keeps or undoes everything. On two, what the first
/// commit has stored stays stored when the second fails: only what was written on MyBdorigen is undone.
class DobleTransaccion {
public:
    /// Throws what opening either of them throws, also when MyBdorigen is not set; then none is left open.
    explicit DobleTransaccion(const WorkContext& component);

    void commitBd() { bd_->commit(); }
    void commitOrigin() { origen_->commit(); }

private:
    // Destroyed last to first: MyBd is rolled back before MyBdorigen.
    std::optional<Transaction> origen_;
    std::optional<Transaction> bd_;
};

}  // namespace FendaMaestros
