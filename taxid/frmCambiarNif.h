#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "session/Recordset.h"
#include "taxid/NifRecord.h"
#include "taxid/OtraFicha.h"
#include "ui/Screen.h"

namespace FendaMaestros {

/// Gives an entry of the register of tax identities another document and, if wanted, that document and its name to the
/// invoices of the active fiscal year.
class frmCambiarNif final : public Screen {
public:
    /// `nIdNif`: Nif_Id of the entry.
    explicit frmCambiarNif(std::int64_t nIdNif);

    /// What a save has changed among the invoices, in words; empty when it had nothing to do there, or there was none.
    const std::string& resumen() const { return resumen_; }

private:
    static constexpr int Nombre = 1, Apellido1 = 2, Apellido2 = 3, Actual = 5, Nuevo = 6;

    void onLoad() override;
    std::string unsaved() const override;
    void disponer();
    void cargar();
    void elegirTipo();
    void dejarDocumento(int field);
    /// Whether another entry has a document already and the person does not want it.
    bool msBuscarCif(const std::string& document);
    /// What there is to say of the new document; `left`: it is no longer being typed.
    void aconsejar(bool left);
    /// Of its form alone.
    void aconsejarForma(const std::string& typed, bool left);
    void anunciarFacturas();
    /// What a save does, as its question names it.
    std::string cambio() const;
    void guardar();
    /// How many invoices it has changed.
    int grabar();
    int facturasDelEjercicio() const;
    std::string condicionFacturas() const;
    std::string nombreCompleto() const;

    std::int64_t nIdNif_;
    /// The entry as it was read.
    std::shared_ptr<Recordset> rsLeida_;
    std::int16_t nEjercicio_ = 0;
    std::string sExpresionNombre_;
    /// The new document of which was said what there is to say.
    std::string sAconsejado_;
    AvisoOtraFicha avisoOtraFicha_;
    std::string resumen_;
    bool bGuardado_ = false;

    ControlArray<TextBox> txtFields{"txtFields", {0, 1, 2, 3, 4, 5, 6}};
    ControlArray<Label> lblFields{"lblFields", {1, 2, 3, 5, 6}};
    Frame fraActual;
    Frame fraNuevo;
    Label lblDocType{"Tipo Documento"};
    ComboBox cboDocType;
    CheckBox Check1;
    CommandButton cmdSalvar{"&Guardar Cambios"};
    CommandButton cmdSalir{"(ESC) - &Salir"};
};

}  // namespace FendaMaestros
