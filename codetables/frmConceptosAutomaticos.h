#pragma once

#include <cstdint>
#include <memory>

#include "session/Recordset.h"
#include "ui/ListingGrid.h"
#include "ui/Screen.h"

namespace FendaMaestros {

/// Assigns to each kind of journal line that is generated automatically the ordinary concept and the variables that
/// make its text. They are rows of `Conceptos` with codes above 1000, their text being the concept's code in three
/// digits and the markers "#1" to "#4" of the variables.
class frmConceptosAutomaticos final : public Screen {
public:
    frmConceptosAutomaticos();

private:
    void onLoad() override;
    void cargarConceptos();
    void CargarGrid();
    /// The rows stored for the chosen type: one, unless something else has written there.
    std::shared_ptr<Recordset> definiciones() const;
    std::string unsaved() const override;
    /// Concept and markers as the screen shows them.
    std::string definicion() const;
    /// From now on what the screen shows is not unsaved.
    void anotarMostrado();
    void elegirTipo();
    void mostrarTipo();
    void mostrarDefinicion(const std::string& description);
    void elegirConcepto(std::int64_t code);
    void marcarVariable(int box);
    void guardar();
    void insertar(class RowWrite& write);

    Label Label1{"Tipo Asiento"};
    ComboBox Combo1;
    Label Label2{"Código de concepto"};
    ComboBox Combo2;
    Frame Frame2;
    ControlArray<CheckBox> Check1{"Check1", {0, 1, 2, 3}};
    Label Label3{"Ampliación del concepto"};
    ControlArray<TextBox> Text1{"Text1", {2}};
    CommandButton cmdGuardar{"&Guardar "};
    CommandButton cmdSalir{"Salir"};
    Frame Frame1;
    ListingGrid DataGrid1;

    std::shared_ptr<Recordset> rsConce;
    /// Id of the automatic concept shown; 0 when its type has none stored yet.
    std::int64_t nIdActual = 0;
    /// Type and definition shown last, or saved.
    std::string sTipoMostrado_;
    std::string sDefinicionMostrada_;
};

}  // namespace FendaMaestros
