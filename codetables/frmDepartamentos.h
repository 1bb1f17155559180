#pragma once

#include "codetables/PantallaCodigo.h"

namespace FendaMaestros {

/// Departments of the company, table `Dpto`.
class frmDepartamentos final : public PantallaCodigo {
public:
    frmDepartamentos();

private:
    std::string consulta() const override;
    void imprimir() override;
};

}  // namespace FendaMaestros
