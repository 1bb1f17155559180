#pragma once

#include <optional>

#include "ui/Transaccion.h"

namespace FendaMaestros {

class FendaMaes;

/// The unit of work of an account's save: a transaction on MyBd and another on MyBdorigen, confirmed and rolled back in
/// that order. The two may stand on one connection; then they nest, and the second one keeps or undoes everything.
class DobleTransaccion {
public:
    /// Throws what opening either of them throws, also when MyBdorigen is not set; then none is left open.
    explicit DobleTransaccion(const FendaMaes& component);

    void confirmarBd() { bd_->confirmar(); }
    void confirmarOrigen() { origen_->confirmar(); }

private:
    // Destroyed last to first: MyBd is rolled back before MyBdorigen.
    std::optional<Transaccion> origen_;
    std::optional<Transaccion> bd_;
};

}  // namespace FendaMaestros
