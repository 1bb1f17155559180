#pragma once

#include "codetables/PantallaCodigo.h"

namespace FendaMaestros {

/// Work centres of the company, table `Centro`.
class frmCentros final : public PantallaCodigo {
public:
    frmCentros();

private:
    std::string consulta() const override;
    void imprimir() override;
};

}  // namespace FendaMaestros
