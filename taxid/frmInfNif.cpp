#include "taxid/frmInfNif.h"

#include <array>
#include <stdexcept>

#include "session/ErrorBd.h"
#include "taxid/ExpresionNombre.h"
#include "taxid/InformeNif.h"
#include "taxid/frmNif.h"
#include "toolkit/Format.h"
#include "toolkit/Text.h"
#include "ui/LongWork.h"
#include "ui/SessionAccess.h"

namespace FendaMaestros {

namespace {

constexpr const char* descending = "DESC";
constexpr const char* ascending = "ASC";

}  // namespace

frmInfNif::frmInfNif() {
    Caption = sTituloVentana = "Informe de Cif/Nif";
    Frame1.Caption = "Formato de Salida para la Emisión";
    static constexpr std::array outputs{"Pantalla", "Impresora", "Archivo PDF a disco", "Archivo PDF por Email",
                                        "Archivo Excell"};
    for (const auto& [index, option] : optSalida.elements()) option->Caption = outputs[static_cast<std::size_t>(index)];
    dbgNif.HeadClick = [this](int column) { ordenarPor(column); };
    dbgNif.ButtonClick = [this](int) { abrirFicha(); };
    dbgNif.DblClick = [this] { abrirFicha(); };
    cmdIniciar.Click = [this] { iniciar(); };
    cmdSalir.Click = [this] { unload(); };
    barProgreso.Visible = false;
    disponer();
    optSalida(Pantalla).setValue(true);
}

void frmInfNif::disponer() {
    add(Frame1, "Frame1");
    add(optSalida, &Frame1);
    add(cmdIniciar, "cmdIniciar");
    add(dbgNif, "dbgNif");
    add(barProgreso, "barProgreso");
    add(cmdSalir, "cmdSalir");

    using namespace arrange;
    std::vector<Arrangement> outputs;
    for (const auto& [index, option] : optSalida.elements()) outputs.push_back(plain(*option));
    layOut(column({
        row({framed(Frame1, {row(std::move(outputs))}), buttons({&cmdIniciar})}),
        filling(dbgNif),
        row({plain(barProgreso), buttons({&cmdSalir})}),
    }));
}

void frmInfNif::onLoad() {
    Screen::onLoad();
    sExpresionNombre_ = expresionNombre();
}

void frmInfNif::iniciar() {
    if (!cargar("Nombre") || rsNif->RecordCount() == 0) return;
    for (const auto& [index, option] : optSalida.elements())
        if (option->Value()) return emitir(index);
}

bool frmInfNif::cargar(const std::string& orden) {
    try {
        const BusyGuard busy(*this);
        const LongWork work(desktop(), barProgreso, lblEstado, "identidades leídas");
        rsNif = read(sqlInformeNif(sExpresionNombre_, orden));
        dbgNif.show(rsNif, columnasInformeNif());
    } catch (const ErrorBd& error) {
        warn(error.what(), cmdIniciar, message::Ok);
        return false;
    }
    bDescendente_ = orden.find(descending) != std::string::npos;
    marcarOrden(orden);
    const std::string count = counted(rsNif->RecordCount(), "identidad", "identidades");
    tell(rsNif->Partial ? count + " hasta aquí: el listado no está completo" : count);
    return true;
}

void frmInfNif::marcarOrden(const std::string& orden) {
    const std::string field = text::trim(text::replaced(text::replaced(orden, descending, ""), ascending, ""));
    const int column = rsNif->columnIndex(field);
    if (column < 0) return;
    const std::string caption = dbgNif.Columns[static_cast<std::size_t>(column)].Caption;
    dbgNif.markOrder(column, caption, !bDescendente_);
}

void frmInfNif::ordenarPor(int column) {
    if (!rsNif || rsNif->RecordCount() == 0) return;
    cargar(rsNif->columnName(column) + (bDescendente_ ? " ASC " : " DESC "));
}

// --- outputs

void frmInfNif::emitir(int salida) {
    if (salida == Excel) return exportar();
    try {
        if (salida == Impresora) desktop().print(*documentoListado());
        if (salida == Pdf) guardarPdf();
        if (salida == Correo) enviarPdf();
    } catch (const std::runtime_error& failure) {
        warn(failure.what(), cmdIniciar);
    }
}

void frmInfNif::exportar() {
    const BusyGuard busy(*this);
    exportRows(dbgNif, {});
    rsNif = dbgNif.rows();
}

std::shared_ptr<const PagedDocument> frmInfNif::documentoListado() const {
    return documentoInformeNif(rsNif, desktop().today());
}

void frmInfNif::guardarPdf() {
    const auto path = desktop().chooseSaveFile(std::string(tituloInformeNif) + ".pdf", "Documento PDF (*.pdf)");
    if (!path) return;
    escribirPdf(*path);
    tell("Guardado en " + *path);
}

void frmInfNif::escribirPdf(const std::string& path) {
    const BusyGuard busy(*this);
    desktop().writePdf(*documentoListado(), path);
}

void frmInfNif::enviarPdf() {
    const std::string path = desktop().temporaryFile(std::string(tituloInformeNif) + ".pdf");
    escribirPdf(path);
    if (!desktop().mailFile(path))
        ask("No hay ningún programa de correo. El PDF está en " + path, message::Information, sTituloVentana);
}

void frmInfNif::abrirFicha() {
    if (rsNif && !rsNif->Eof()) frmNif(rsNif->Fields("Nif_Doc").Value.text()).show();
}

}  // namespace FendaMaestros
