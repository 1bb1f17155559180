#pragma once

#include "codetables/PantallaTabla.h"

namespace FendaMaestros {

/// Countries, shared table `Pais`. Their codes are given: rows are corrected here, never created.
class frmPaises final : public PantallaTabla {
public:
    frmPaises();

private:
    std::string consulta() const override;
    void mostrarFila() override;
    bool grabar() override;
    void imprimir() override;
    void NuevoCancelar() override {}
    std::string claveMostrada() const override { return Text1(0).Text; }
};

}  // namespace FendaMaestros
