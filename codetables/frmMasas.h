#pragma once

#include "codetables/PantallaTabla.h"

namespace FendaMaestros {

/// Balance masses of the plan in force in the active fiscal year, shared table `Masas`.
class frmMasas final : public PantallaTabla {
public:
    frmMasas();

private:
    void onLoad() override;
    std::string consulta() const override;
    void mostrarFila() override;
    void vaciarFila() override;
    std::string contenido() const override { return PantallaTabla::contenido() + cboMasas.Text(); }
    void NuevoCancelar() override;
    bool grabar() override;
    void imprimir() override;

    ComboBox cboMasas;
};

}  // namespace FendaMaestros
