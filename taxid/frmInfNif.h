#pragma once

#include <memory>
#include <string>

#include "ui/ListingGrid.h"
#include "ui/Screen.h"

namespace FendaMaestros {

/// The whole register of tax identities as a listing, on the screen, on paper, as a PDF file or as a spreadsheet.
class frmInfNif final : public Screen {
public:
    frmInfNif();

private:
    enum Salida { Pantalla = 0, Impresora = 1, Pdf = 2, Correo = 3, Excel = 4 };

    void onLoad() override;
    void disponer();
    void iniciar();
    /// Reads and shows the register in the order of a column's name, with " ASC " or " DESC " behind it or nothing.
    /// False when it cannot be read: the person has been told, and what was shown stays.
    bool cargar(const std::string& orden);
    void marcarOrden(const std::string& orden);
    void ordenarPor(int column);
    void emitir(int salida);
    void exportar();
    void guardarPdf();
    void enviarPdf();
    void escribirPdf(const std::string& path);
    std::shared_ptr<const PagedDocument> documentoListado() const;
    void abrirFicha();

    Frame Frame1;
    ControlArray<OptionButton> optSalida{"optSalida", {0, 1, 2, 3, 4}};
    ListingGrid dbgNif;
    ProgressBar barProgreso;
    CommandButton cmdIniciar{"&Iniciar"};
    CommandButton cmdSalir{"(ESC) - &Salir"};

    std::shared_ptr<Recordset> rsNif;
    std::string sExpresionNombre_;
    bool bDescendente_ = false;
};

}  // namespace FendaMaestros
