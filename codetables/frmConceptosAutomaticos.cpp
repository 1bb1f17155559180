#include "codetables/frmConceptosAutomaticos.h"

#include <array>

#include "toolkit/Format.h"
#include "toolkit/Text.h"
#include "ui/CodedList.h"
#include "ui/RowWrite.h"
#include "ui/SessionAccess.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

/// Entry types by list position; the code of each is its position plus firstCode.
constexpr std::array entryTypes = {"Sin definición",   "Compras. Proveedor", "Compras. Iva",    "Compras. Gasto",
                                   "Ventas. Clientes", "Ventas. Iva",        "Ventas. Ingresos"};
constexpr int firstCode = 1000;
constexpr std::array variables = {"1 Documento", "2 Fecha Factura", "3 Nombre cuenta", "4 Nº Registro Iva"};
/// Digits of the linked concept at the start of a stored description.
constexpr std::size_t linkLength = 3;
/// Digits of the concept at the start of an item of Combo2.
constexpr std::size_t itemCodeLength = 2;

/// The columns of the table are hidden, the kind of entry is shown.
const std::array<ListingColumn, 5> shownColumns{{{}, {}, {}, {}, {"Tipo de asiento", 7800}}};

std::string markerOf(int box) { return "#" + std::to_string(box + 1); }

}  // namespace

frmConceptosAutomaticos::frmConceptosAutomaticos() {
    Caption = "Asignación de conceptos automáticos ";
    Frame1.Caption = "Conceptos automáticos definidos";
    Frame2.Caption = "Variables";
    Text1(2).MaxLength = 50;
    Text1(2).Locked = true;
    editField(Text1(2));

    Combo1.Click = [this] { elegirTipo(); };
    for (const auto& [box, check] : Check1.elements()) {
        check->Caption = variables[static_cast<std::size_t>(box)];
        check->Click = [this, index = box] { marcarVariable(index); };
    }
    cmdGuardar.Click = [this] { guardar(); };
    cmdSalir.Click = [this] { unload(); };

    add(Label1, "Label1");
    add(Combo1, "Combo1");
    add(Label2, "Label2");
    add(Combo2, "Combo2");
    add(Frame2, "Frame2");
    add(Check1, &Frame2);
    add(Label3, "Label3");
    add(Text1);
    add(cmdGuardar, "cmdGuardar");
    add(cmdSalir, "cmdSalir");
    add(Frame1, "Frame1");
    add(DataGrid1, "DataGrid1", &Frame1);

    using namespace arrange;
    layOut(column({
        fields({field(Label1, Combo1), field(Label2, Combo2)}),
        framed(Frame2, {row({plain(Check1(0)), plain(Check1(1)), plain(Check1(2)), plain(Check1(3))})}),
        fields({field(Label3, Text1(2))}),
        framed(Frame1, {filling(DataGrid1)}),
        buttons({&cmdGuardar, &cmdSalir}),
    }));
}

void frmConceptosAutomaticos::onLoad() {
    Screen::onLoad();
    for (const char* type : entryTypes) Combo1.AddItem(type);
    cargarConceptos();
    Combo1.setListIndex(0);
    Combo2.setListIndex(0);
    CargarGrid();
}

void frmConceptosAutomaticos::cargarConceptos() {
    Combo2.AddItem(codedList::item("00", "Sin concepto"));
    const auto concepts = read("SELECT * FROM KXComun.dbo.Conceptos WHERE Conce_Cod<1000 ORDER BY Conce_Des");
    for (; !concepts->Eof(); concepts->MoveNext())
        Combo2.AddItem(codedList::item(format(concepts->Fields("Conce_Cod").Value, "00"),
                                       concepts->Fields("conce_des").Value.text()));
}

void frmConceptosAutomaticos::CargarGrid() {
    const BusyGuard busy(*this);
    rsConce = read(
        "SELECT *,"
        "CASE Conce_Cod "
        "WHEN 1001 THEN 'Compras. Proveedor' "
        "WHEN 1002 THEN 'Compras. Iva' "
        "WHEN 1003 THEN 'Compras. Gasto' "
        "WHEN 1004 THEN 'Ventas. Clientes' "
        "WHEN 1005 THEN 'Ventas. Iva' "
        "WHEN 1006 THEN 'Ventas. Ingresos' "
        "END AS Tipo "
        "FROM KXComun.dbo.Conceptos WHERE Conce_Cod>1000 ORDER BY Conce_Cod");
    DataGrid1.show(rsConce, shownColumns);
}

std::shared_ptr<Recordset> frmConceptosAutomaticos::definiciones() const {
    return read("SELECT * FROM KXComun.dbo.Conceptos WHERE Conce_Cod = " +
                std::to_string(Combo1.ListIndex() + firstCode));
}

std::string frmConceptosAutomaticos::definicion() const { return text::trim(Combo2.Text() + " " + Text1(2).Text); }

std::string frmConceptosAutomaticos::unsaved() const {
    const std::string shown = definicion();
    return shown == sDefinicionMostrada_ ? std::string() : sTipoMostrado_ + ", " + shown;
}

void frmConceptosAutomaticos::anotarMostrado() {
    sTipoMostrado_ = Combo1.Text();
    sDefinicionMostrada_ = definicion();
}

void frmConceptosAutomaticos::elegirTipo() {
    replacing([this] {
        mostrarTipo();
        anotarMostrado();
    });
}

void frmConceptosAutomaticos::mostrarTipo() {
    for (const auto& [box, check] : Check1.elements()) check->setValue(false);
    const auto stored = definiciones();
    Text1(2).Text.clear();
    if (stored->RecordCount() != 1) {
        nIdActual = 0;
        Combo2.setListIndex(0);
        return;
    }
    nIdActual = stored->Fields("Conce_Id").Value.integer();
    mostrarDefinicion(stored->Fields("conce_des").Value.text());
}

void frmConceptosAutomaticos::mostrarDefinicion(const std::string& description) {
    const std::u32string characters = text::characters(description);
    if (characters.size() >= linkLength) elegirConcepto(Variant(text::left(description, linkLength)).integer());
    for (std::size_t at = linkLength; at + 1 < characters.size(); ++at) {
        const char32_t digit = characters[at + 1];
        if (characters[at] == U'#' && digit >= U'1' && digit <= U'4')
            Check1(static_cast<int>(digit - U'1')).setValue(true);
    }
    // Last, so that the stored text wins over the markers that ticking the boxes has appended.
    Text1(2).Text = description.substr(text::left(description, linkLength).size());
}

void frmConceptosAutomaticos::elegirConcepto(std::int64_t code) {
    for (int item = 0; item < Combo2.ListCount(); ++item) {
        if (Variant(text::left(Combo2.List(item), itemCodeLength)).integer() != code) continue;
        Combo2.setListIndex(item);
        return;
    }
}

void frmConceptosAutomaticos::marcarVariable(int box) {
    const std::string extension = text::trim(Text1(2).Text);
    const std::string marker = markerOf(box);
    Text1(2).Text = Check1(box).Value() ? extension + marker : text::replaced(extension, marker, "");
}

void frmConceptosAutomaticos::guardar() {
    if (Combo1.ListIndex() <= 0) return warn("Debe indicar un tipo de asiento", Combo1, message::Ok);

    const std::string linked = format(text::left(Combo2.Text(), itemCodeLength), "000");
    RowWrite write(instanciaActual().sesion(), "KXComun.dbo.Conceptos");
    write.column("Conce_Cod", valor::Texto, format(Combo1.ListIndex() + firstCode, "0000"));
    write.column("Conce_Des", valor::Texto, linked + Text1(2).Text);
    write.column("Conce_Mod", valor::Entero, 0);
    const std::string key = nIdActual != 0 ? std::to_string(nIdActual) : std::string();
    if (nIdActual != 0)
        write.update(" WHERE Conce_Id = " + key);
    else
        insertar(write);
    anotarMostrado();
    CargarGrid();
    DataGrid1.markStored(key);
    tell("Guardado: " + Combo1.Text());
}

/// The row just inserted is the one that the next save updates, unless its type has others.
void frmConceptosAutomaticos::insertar(RowWrite& write) {
    write.insert();
    const auto stored = definiciones();
    if (stored->RecordCount() == 1) nIdActual = stored->Fields("Conce_Id").Value.integer();
}

}  // namespace FendaMaestros
