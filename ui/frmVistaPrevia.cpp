#include "ui/frmVistaPrevia.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "ui/FileName.h"

namespace FendaMaestros {

namespace {

constexpr int fitsWidth = 0;
constexpr int actualSize = 100;
constexpr std::array zooms{50, 75, actualSize, 125, 150, 200, 300};

}  // namespace

frmVistaPrevia::frmVistaPrevia(Desktop& desktop, std::shared_ptr<const PagedDocument> document)
    : Screen(desktop), pages_(document->pageCount()) {
    Caption = document->title();
    Pagina.Document = std::move(document);

    add(Pagina, "Pagina");
    add(cmdPrimera, "cmdPrimera");
    add(cmdAnterior, "cmdAnterior");
    add(lblPagina, "lblPagina");
    add(cmdSiguiente, "cmdSiguiente");
    add(cmdUltima, "cmdUltima");
    add(cmdReducir, "cmdReducir");
    add(cmdAmpliar, "cmdAmpliar");
    add(cmdAjustar, "cmdAjustar");
    add(cmdImprimir, "cmdImprimir");
    add(cmdPdf, "cmdPdf");
    add(cmdSalir, "cmdSalir");
    layOut(arrange::column(
        {arrange::row({arrange::plain(cmdPrimera), arrange::plain(cmdAnterior), arrange::plain(lblPagina),
                       arrange::plain(cmdSiguiente), arrange::plain(cmdUltima), arrange::plain(cmdReducir),
                       arrange::plain(cmdAmpliar), arrange::plain(cmdAjustar)}),
         arrange::filling(Pagina), arrange::buttons({&cmdImprimir, &cmdPdf, &cmdSalir})}));

    cmdPrimera.Click = [this] { MostrarPagina(0); };
    cmdAnterior.Click = [this] { MostrarPagina(Pagina.Page - 1); };
    cmdSiguiente.Click = [this] { MostrarPagina(Pagina.Page + 1); };
    cmdUltima.Click = [this] { MostrarPagina(pages_ - 1); };
    cmdReducir.Click = [this] { Ampliar(-1); };
    cmdAmpliar.Click = [this] { Ampliar(1); };
    cmdAjustar.Click = [this] { MostrarTamano(fitsWidth); };
    cmdImprimir.Click = [this] { Imprimir(); };
    cmdPdf.Click = [this] { GuardarPdf(); };
    cmdSalir.Click = [this] { unload(); };
    explainKey({key::PageUp}, "Hacia atrás, de pantalla en pantalla");
    explainKey({key::PageDown}, "Hacia delante, de pantalla en pantalla");
    explainKey({key::Home}, "Primera página");
    explainKey({key::End}, "Última página");
    MostrarPagina(0);
}

void frmVistaPrevia::MostrarPagina(int page) {
    Pagina.Page = std::clamp(page, 0, pages_ - 1);
    Pagina.Scrolled = 0;
    lblPagina.Caption = "Página " + std::to_string(Pagina.Page + 1) + " de " + std::to_string(pages_);
    cmdPrimera.Enabled = cmdAnterior.Enabled = Pagina.Page > 0;
    cmdSiguiente.Enabled = cmdUltima.Enabled = Pagina.Page < pages_ - 1;
}

void frmVistaPrevia::hojear(int direction) {
    const int shown = Pagina.Page;
    if (Pagina.scroll(direction)) return;
    MostrarPagina(shown + direction);
    if (direction < 0 && Pagina.Page != shown) Pagina.Scrolled = Pagina.ScrollEnd;
}

void frmVistaPrevia::MostrarTamano(int zoom) {
    Pagina.Zoom = zoom;
    cmdReducir.Enabled = zoom != zooms.front();
    cmdAmpliar.Enabled = zoom != zooms.back();
}

void frmVistaPrevia::Ampliar(int step) {
    const int from = Pagina.Zoom == fitsWidth ? actualSize : Pagina.Zoom;
    const auto at = std::ranges::find(zooms, from) - zooms.begin() + step;
    MostrarTamano(zooms[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(at, 0, zooms.size() - 1))]);
}

void frmVistaPrevia::Imprimir() {
    try {
        desktop().print(*Pagina.Document);
    } catch (const std::runtime_error& failure) {
        informar(failure.what(), message::Exclamation);
    }
}

void frmVistaPrevia::GuardarPdf() {
    const auto path = desktop().chooseSaveFile(fileNameFrom(Caption, "Listado") + ".pdf", "Documento PDF (*.pdf)");
    if (!path) return;
    try {
        const BusyGuard busy(*this);
        desktop().writePdf(*Pagina.Document, *path);
    } catch (const std::runtime_error& failure) {
        return informar(failure.what(), message::Exclamation);
    }
    if (!desktop().openFile(*path)) informar("Se ha guardado " + *path, message::Information);
}

void frmVistaPrevia::informar(const std::string& text, int icon) {
    markPendingMessage();
    ask(text, icon, Caption);
}

void frmVistaPrevia::onKeyDown(int& code, int state) {
    if (state != shift::None) return;
    switch (code) {
        case key::PageUp:
            hojear(-1);
            break;
        case key::PageDown:
            hojear(1);
            break;
        case key::Home:
            MostrarPagina(0);
            break;
        case key::End:
            MostrarPagina(pages_ - 1);
            break;
        default:
            return;
    }
    code = 0;
}

}  // namespace FendaMaestros
