#pragma once

#include <memory>
#include <string>

#include "toolkit/Document.h"
#include "ui/Screen.h"

namespace FendaMaestros {

/// Shows the pages of a document one by one, prints them and saves them as PDF. PageUp and PageDown scroll
/// the page and turn it at its ends, Home and End go to the first and the last, from anywhere.
class frmVistaPrevia final : public Screen {
public:
    /// The window takes the title of the document.
    frmVistaPrevia(Desktop& desktop, std::shared_ptr<const PagedDocument> document);

protected:
    /// It reads nothing.
    void onLoad() override {}
    void onKeyDown(int& code, int shift) override;

private:
    /// From its top.
    void MostrarPagina(int page);
    /// A screenful on (1) or back (-1): of the page, or the next page.
    void hojear(int direction);
    /// In percent; 0 fits the width.
    void MostrarTamano(int zoom);
    /// One step larger (1) or smaller (-1).
    void Ampliar(int step);
    void Imprimir();
    void GuardarPdf();
    void informar(const std::string& text, int icon);

    PageView Pagina;
    Label lblPagina;
    CommandButton cmdPrimera{"&Primera"};
    CommandButton cmdAnterior{"&Anterior"};
    CommandButton cmdSiguiente{"&Siguiente"};
    CommandButton cmdUltima{"Ú&ltima"};
    CommandButton cmdReducir{"M&enos"};
    CommandButton cmdAmpliar{"&Más"};
    CommandButton cmdAjustar{"A&justar"};
    CommandButton cmdImprimir{"&Imprimir"};
    CommandButton cmdPdf{"Guardar P&DF"};
    CommandButton cmdSalir{"Salir"};
    int pages_;
};

}  // namespace FendaMaestros
