#pragma once

#include "codetables/PantallaCodigo.h"

namespace FendaMaestros {

/// Ordinary accounting concepts, shared table `Conceptos` below code 1000. Concepts 94 to 99 can only be looked at.
class frmConceptos final : public PantallaCodigo {
public:
    frmConceptos();

private:
    std::string consulta() const override;
    void mostrarFila() override;
    void completarAlta(RowWrite& write) override;
    void imprimir() override;

    CommandButton cmdAuto{"Definición de Conceptos Automáticos"};
};

}  // namespace FendaMaestros
