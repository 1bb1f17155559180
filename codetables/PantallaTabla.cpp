#include "codetables/PantallaTabla.h"

#include <algorithm>

#include "toolkit/Text.h"
#include "ui/SessionAccess.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

constexpr const char* captionCancelar = "Cancelar";

}  // namespace

PantallaTabla::PantallaTabla(TablaMaestra table, std::initializer_list<int> fields, std::initializer_list<int> labels)
    : Text1("Text1", fields), Label1("Label1", labels), tabla_(std::move(table)) {
    Caption = tabla_.ventana;
    sTituloVentana = tabla_.tituloVentana;
    Frame1.Caption = tabla_.marco;
    cmdNueva.Caption = tabla_.captionNueva;
    for (const auto& [index, field] : Text1.elements()) editField(*field);

    DataGrid1.Sort = [this](int column, bool ascending) { CargarGrid(static_cast<std::int16_t>(column), ascending); };
    cmdGuardar.Click = [this] { guardar(); };
    cmdNueva.Click = [this] { NuevoCancelar(); };
    cmdBorrar.Click = [this] { tell("Las filas de esta tabla no se borran"); };
    cmdListado.Click = [this] { imprimir(); };
    cmdExcel.Click = [this] { exportar(); };
    cmdSalir.Click = [this] { unload(); };
}

void PantallaTabla::disponer(std::vector<Arrangement> fields, CommandButton* own, const char* ownName) {
    std::vector<Control*> commands;
    const auto command = [&](CommandButton& button, const char* name) {
        add(button, name);
        commands.push_back(&button);
    };
    command(cmdGuardar, "cmdGuardar");
    command(cmdNueva, "cmdNueva");
    command(cmdBorrar, "cmdBorrar");
    command(cmdListado, "cmdListado");
    command(cmdExcel, "cmdExcel");
    if (own) command(*own, ownName);
    command(cmdSalir, "cmdSalir");
    add(Frame1, "Frame1");
    add(DataGrid1, "DataGrid1", &Frame1);

    layOut(arrange::column({arrange::framed(Frame1, {arrange::filling(DataGrid1)}), arrange::fields(std::move(fields)),
                            arrange::buttons(std::move(commands))}));
}

void PantallaTabla::onLoad() {
    Screen::onLoad();
    CargarGrid(1, true);
}

void PantallaTabla::CargarGrid(std::int16_t nColumna, bool bAsc) {
    DataGrid1.Enabled = true;
    std::string sql = consulta();
    const auto order = std::ranges::find(tabla_.ordenes, nColumna, &ListingOrder::column);
    const bool ordered = order != tabla_.ordenes.end();
    if (ordered) sql += order->orderBy + (bAsc ? " ASC " : " DESC ");

    const BusyGuard busy(*this);
    rsConce = read(sql);
    nFilaMostrada_ = -1;
    rsConce->MoveComplete = [this] { moverRegistro(); };
    DataGrid1.show(rsConce, tabla_.columnas);
    cmdExcel.Enabled = cmdListado.Enabled = rsConce->RecordCount() > 0;
    if (ordered) DataGrid1.markOrder(nColumna, order->caption, bAsc);
}

/// The row shown already, picked again, keeps what has been typed over it, as long as there is anything in the fields.
void PantallaTabla::moverRegistro() {
    const int row = rsConce->currentRow();
    if (row >= 0 && row == nFilaMostrada_ && !camposVacios()) return;
    nFilaMostrada_ = row;
    if (unsaved().empty()) return mostrarRegistro();
    replacing([this] { mostrarRegistro(); });
}

void PantallaTabla::mostrarRegistro() {
    cmdGuardar.Enabled = true;
    Text1(1).Locked = false;
    if (nFilaMostrada_ < 0) {
        nIdActual = 0;
        vaciarFila();
    } else {
        DataGrid1.Enabled = true;
        cmdNueva.Caption = tabla_.captionNueva;
        mostrarFila();
    }
    anotarMostrado();
}

std::string PantallaTabla::contenido() const {
    std::string shown;
    for (const auto& [index, field] : Text1.elements())
        if (index > 0) shown += text::trim(field->Text) + "\n";
    return shown;
}

void PantallaTabla::anotarMostrado() {
    sCodigoMostrado_ = Text1(0).Text;
    sContenidoMostrado_ = contenido();
}

std::string PantallaTabla::unsaved() const {
    if (contenido() == sContenidoMostrado_) return {};
    return text::trim(sCodigoMostrado_ + " " + Text1(1).Text);
}

void PantallaTabla::vaciarFila() { vaciarTextos(); }

void PantallaTabla::vaciarTextos() {
    for (const auto& [index, field] : Text1.elements()) field->Text.clear();
}

bool PantallaTabla::camposVacios() const {
    return std::ranges::all_of(Text1.elements(), [](const auto& field) { return field.second->Text.empty(); });
}

void PantallaTabla::NuevoCancelar() {
    replacing([this] {
        nIdActual = 0;
        nFilaMostrada_ = -1;
        vaciarTextos();
        anotarMostrado();
    });
    if (enAlta()) {
        cmdNueva.Caption = tabla_.captionNueva;
        DataGrid1.Enabled = true;
        setFocus(DataGrid1);
        return;
    }
    DataGrid1.Enabled = false;
    cmdNueva.Caption = captionCancelar;
    Text1(0).Locked = false;
    Text1(1).Locked = false;
    setFocus(Text1(0));
}

void PantallaTabla::guardar() {
    const std::string key = claveMostrada();
    if (!grabar()) return;
    const std::string saved = text::trim(Text1(0).Text + " " + Text1(1).Text);
    anotarMostrado();
    cmdNueva.Caption = tabla_.captionNueva;
    CargarGrid(1, true);
    DataGrid1.markStored(key);
    tell("Guardado: " + saved);
}

void PantallaTabla::exportar() {
    const BusyGuard busy(*this, false);
    exportRows(DataGrid1, tabla_.tituloExportacion);
}

}  // namespace FendaMaestros
