#pragma once

#include <memory>
#include <optional>
#include <string>

#include "app/window/DirectWindow.h"
#include "interchange/Import.h"
#include "interchange/ImportFile.h"

namespace FendaMaestros {

/// Asks for a file of accounts or identities, tells how it has been understood and what becomes of each of its rows,
/// and imports it. What a person says of the file instead shows at once in what becomes of the rows. Nothing is written
/// before cmdImportar, and then all of it or nothing.
class frmImportar final : public DirectWindow {
public:
    frmImportar();

private:
    bool answersFromFields() const override { return activeControl() == &Text1; }

    void disponer();
    void llenarListas();

    void examinar();
    void leer();
    /// Reads the file by what has been chosen, and shows it. Gives what keeps it from being read, a sentence, and then
    /// shows nothing of it; else "".
    std::string releer();
    void leerFilas();
    /// Another file may be another thing.
    void olvidar();

    void mostrarForma();
    void mostrarColumnas();
    void mostrarDato();
    void mostrarFilas();
    void habilitar();

    /// The person has said something of the file that the columns assigned by hand may not outlive.
    void cambiarForma(Control& at, bool keepsColumns = false);
    void asignarColumna();

    void importar();
    /// Gives false when nothing has been written, which is told.
    bool escribir();
    void guardarErroneas();

    std::string path_;  ///< of the file that is shown, "" for none
    std::optional<ExchangeKind> kind_;
    FormChoice choice_;
    std::unique_ptr<ImportFile> file_;
    std::shared_ptr<const ImportPreview> preview_;
    bool showing_ = false;  ///< lists are set by the window, and by nobody

    Label Label1{"Fichero"};
    TextBox Text1;
    CommandButton cmdLeer{"&Leer"};
    CommandButton cmdExaminar{"E&xaminar..."};
    Label Label2{"Contiene"};
    ComboBox cboContiene;
    Label Label3{"Escrito en"};
    ComboBox cboCodificacion;
    ComboBox cboSeparador;
    CheckBox chkCabecera;
    CheckBox chkFueraDelPlan;
    DataGrid dbgColumnas;
    Label Label4{"La columna es"};
    ComboBox cboDato;
    DataGrid dbgFilas;
    CheckBox chkErroneas;
    ProgressBar barProgreso;
    CommandButton cmdImportar{"&Importar"};
    CommandButton cmdGuardar{"&Guardar las erróneas..."};
    CommandButton cmdSalir{"&Salir"};
};

}  // namespace FendaMaestros
