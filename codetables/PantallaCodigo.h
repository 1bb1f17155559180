#pragma once

#include "codetables/DtrListado.h"
#include "codetables/PantallaTabla.h"

namespace FendaMaestros {

/// What tells apart the tables that have a numeric code and a description.
struct TablaCodigo {
    const char* tabla;          ///< "KXComun.dbo.Conceptos"
    const char* columnaId;      ///< "Conce_Id"
    const char* columnaCodigo;  ///< "Conce_Cod"
    const char* columnaDes;     ///< "Conce_Des"
    const char* campoCodigo;    ///< the code's name in the grid's read
    const char* campoDes;       ///< the description's name in the grid's read
    const char* pregunta;       ///< asked for a code that is not there
    const char* avisoCodigo;
    const char* avisoDescripcion;
    int iconoAviso;
};

/// A code table whose rows have a numeric code and a description: leaving the code jumps to its row, or offers to
/// create it.
class PantallaCodigo : public PantallaTabla {
protected:
    PantallaCodigo(TablaMaestra table, const TablaCodigo& code);

    /// Further columns of a new row.
    virtual void completarAlta(class RowWrite& /*write*/) {}

    void mostrarFila() override;
    bool grabar() override;

private:
    void buscarCodigo();

    TablaCodigo codigo_;
};

}  // namespace FendaMaestros
