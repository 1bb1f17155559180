#include "taxid/frmInfNif.h"

#include <array>

#include "taxid/ExpresionNombre.h"
#include "taxid/InformeNif.h"
#include "taxid/frmNif.h"
#include "toolkit/Format.h"
#include "toolkit/Text.h"
#include "ui/FileName.h"
#include "ui/GridReport.h"
#include "ui/SessionAccess.h"

namespace FendaMaestros {

namespace {

constexpr const char* title = "Listado de identificadores";
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
    disponer();
    optSalida(Pantalla).setValue(true);
}

void frmInfNif::disponer() {
    add(Frame1, "Frame1");
    add(optSalida, &Frame1);
    add(cmdIniciar, "cmdIniciar");
    add(dbgNif, "dbgNif");
    add(cmdSalir, "cmdSalir");

    using namespace arrange;
    std::vector<Arrangement> outputs;
    for (const auto& [index, option] : optSalida.elements()) outputs.push_back(plain(*option));
    layOut(column({
        row({framed(Frame1, {row(std::move(outputs))}), buttons({&cmdIniciar})}),
        filling(dbgNif),
        buttons({&cmdSalir}),
    }));
}

void frmInfNif::onLoad() {
    Screen::onLoad();
    sExpresionNombre_ = expresionNombre();
}

void frmInfNif::iniciar() {
    cargar("Nombre");
    if (rsNif->RecordCount() == 0) return;
    for (const auto& [index, option] : optSalida.elements())
        if (option->Value()) return emitir(index);
}

void frmInfNif::cargar(const std::string& orden) {
    {
        const BusyGuard busy(*this);
        rsNif = read(sqlInformeNif(sExpresionNombre_, orden));
        dbgNif.show(rsNif, columnasInformeNif());
    }
    bDescendente_ = orden.find(descending) != std::string::npos;
    marcarOrden(orden);
    tell(format(rsNif->RecordCount(), "#,##0") + " identidades");
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
    switch (salida) {
        case Impresora:
            desktop().print(*documentoListado());
            break;
        case Pdf:
            guardarPdf();
            break;
        case Correo:
            enviarPdf();
            break;
        case Excel:
            exportar();
            break;
        default:
            break;
    }
}

void frmInfNif::exportar() {
    const BusyGuard busy(*this);
    dbgNif.exportRows({});
    rsNif = dbgNif.rows();
}

std::shared_ptr<const PagedDocument> frmInfNif::documentoListado() const {
    const GridReport report(title, "Todas las identidades registradas", rsNif, columnasInformeNif());
    return report.document(desktop().today());
}

void frmInfNif::guardarPdf() {
    const auto path = desktop().chooseSaveFile(std::string(title) + ".pdf", "Documento PDF (*.pdf)");
    if (!path) return;
    desktop().writePdf(*documentoListado(), *path);
    tell("Guardado en " + *path);
}

void frmInfNif::enviarPdf() {
    const std::string path = desktop().temporaryFile(std::string(title) + ".pdf");
    desktop().writePdf(*documentoListado(), path);
    if (!desktop().mailFile(path))
        ask("No hay ningún programa de correo. El PDF está en " + path, message::Information, sTituloVentana);
}

void frmInfNif::abrirFicha() {
    if (rsNif && !rsNif->Eof()) frmNif(rsNif->Fields("Nif_Doc").Value.text()).show();
}

}  // namespace FendaMaestros
