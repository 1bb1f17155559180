#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "session/Recordset.h"
#include "toolkit/Controls.h"
#include "ui/ListingGrid.h"
#include "ui/Screen.h"

namespace FendaMaestros {

/// What tells one code-table screen from another.
struct TablaMaestra {
    std::string ventana;            ///< window caption
    std::string marco;              ///< caption of the grid's frame
    std::string tituloVentana;      ///< title of the messages; may be empty
    std::string captionNueva;       ///< caption of cmdNueva in browse mode
    std::string tituloExportacion;  ///< title of the spreadsheet
    std::vector<ListingOrder> ordenes;
    std::vector<ListingColumn> columnas;
};

/// The design that the small master tables share: the whole table in a grid sorted by its headers, and below it the
/// fields of the current row. Two modes, told by the caption of cmdNueva: browse, and new entry ("Cancelar").
class PantallaTabla : public Screen {
protected:
    /// `fields` and `labels` are the indexes of Text1 and Label1.
    PantallaTabla(TablaMaestra table, std::initializer_list<int> fields, std::initializer_list<int> labels);

    // --- what each screen adds

    /// The grid's read, without its order.
    virtual std::string consulta() const = 0;
    /// Fills the edit fields from the current row of rsConce.
    virtual void mostrarFila() = 0;
    /// Empties the edit fields: there is no current row.
    virtual void vaciarFila();
    /// What the fields say of their row, its code apart.
    virtual std::string contenido() const;
    /// Checks and writes what the fields show; false when a check refused it.
    virtual bool grabar() = 0;
    virtual void imprimir() = 0;
    virtual void NuevoCancelar();
    /// The key of the stored row that the fields show, as the first column of the grid's read has it; "" for none.
    virtual std::string claveMostrada() const { return nIdActual != 0 ? std::to_string(nIdActual) : std::string(); }

    // --- what they share

    void onLoad() override;
    std::string unsaved() const override;
    /// From now on what the fields say is not unsaved, and belongs to the code that they show.
    void anotarMostrado();
    /// Reads the table again, sorted by a grid column.
    void CargarGrid(std::int16_t nColumna, bool bAsc);
    bool enAlta() const { return cmdNueva.Caption != tabla_.captionNueva; }
    /// Registers the commands and the grid behind the fields that the screen has registered, and lays all out: the grid
    /// in its frame, `fields` below it, the commands in the last line with `own` before cmdSalir.
    void disponer(std::vector<Arrangement> fields, CommandButton* own = nullptr, const char* ownName = "");
    void vaciarTextos();
    std::string campo(std::string_view column) const { return rsConce->Fields(column).Value.text(); }

    ListingGrid DataGrid1;
    Frame Frame1;
    ControlArray<TextBox> Text1;
    ControlArray<Label> Label1;
    CommandButton cmdGuardar{"&Guardar "};
    CommandButton cmdNueva;
    CommandButton cmdBorrar{"&Borrar"};
    CommandButton cmdListado{"&Listado"};
    CommandButton cmdExcel{"&Excel"};
    CommandButton cmdSalir{"Salir"};

    /// The rows in the grid.
    std::shared_ptr<Recordset> rsConce;
    /// Id of the row in the edit fields; 0 when they show no stored row.
    std::int64_t nIdActual = 0;

private:
    void moverRegistro();
    void mostrarRegistro();
    void guardar();
    void exportar();

    bool camposVacios() const;

    TablaMaestra tabla_;
    /// The row of rsConce that the fields have been filled from; -1 when they show no stored row.
    int nFilaMostrada_ = -1;
    std::string sCodigoMostrado_;
    std::string sContenidoMostrado_;
};

}  // namespace FendaMaestros
