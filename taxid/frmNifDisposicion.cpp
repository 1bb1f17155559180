#include "taxid/frmNif.h"

namespace FendaMaestros {

void frmNif::prepararCampos() {
    struct Campo {
        int index;
        int maxLength;
        const char* caption;
    };
    static constexpr Campo fields[] = {
        {5, 100, "Documento"},
        {1, 100, "Nombre o Razon Social"},
        {2, 100, "Primer Apellido"},
        {3, 100, "Segundo Apellido"},
        {4, 100, "Nombre Comercial"},
        {45, 100, "Nombre de la Via"},
        {44, 4, "Numero"},
        {43, 2, "Escal"},
        {48, 3, "Bloque"},
        {46, 2, "Piso"},
        {47, 2, "Puerta"},
        {49, 5, "C.P."},
        {50, 100, "Población (F10 búsqueda)"},
        {6, 15, "Telefono fijo"},
        {8, 15, "Telefono movil"},
        {7, 15, "Fax"},
        {9, 50, "Correo electronico"},
    };
    for (const Campo& field : fields) {
        lblFields(field.index).Caption = field.caption;
        txtFields(field.index).MaxLength = field.maxLength;
    }
    txtFields(10).MaxLength = 50;
    txtFields(0).MaxLength = 8;
    txtFields(0).Visible = txtFields(10).Visible = false;
    for (const int index : {0, 4, 48}) txtFields(index).Enabled = false;
    for (const auto& [index, field] : txtFields.elements())
        editField(*field, [this, number = index] { salirCampo(number); });

    TextBox& document = txtFields(5);
    document.KeyPress = [this, &document](int& ascii) {
        if (cboDocType.ListIndex() == documento::Nif) Ayuda.FiltrarTecla(document, ascii, false, 0);
    };
    TextBox& postalCode = txtFields(49);
    postalCode.KeyPress = [this, &postalCode](int& ascii) { Ayuda.FiltrarTecla(postalCode, ascii, false, 0); };
}

void frmNif::prepararMandos() {
    for (const char* type : {"C.I.F.", "N.I.F.", "N.I.E.", "Otros"}) cboDocType.AddItem(type);
    cboDocType.Click = [this] { elegirTipoDocumento(); };
    cboPais.Click = [this] { elegirPais(); };
    cboClaveRetencion.Click = [this] { elegirClaveRetencion(); };
    cmdSalvar.Click = [this] { guardar(); };
    cmdBorrar.Click = [this] { borrar(); };
    cmdBorrar.Enabled = false;
    cmdSalir.Click = [this] { unload(); };
    lblTeclas.Caption =
        "F1 buscar por documento · F2 buscar por nombre · F5 guardar · Intro campo siguiente · Esc salir";
}

/// The tab order is that of reading; the document comes first, since it decides which entry the other fields belong to.
void frmNif::disponer() {
    fraIdentificacion.Caption = "Identificación";
    fraDireccion.Caption = "Dirección Fiscal";

    const auto text = [this](int index, Frame& frame) {
        const std::string number = "(" + std::to_string(index) + ")";
        add(lblFields(index), "lblFields" + number, &frame);
        add(txtFields(index), "txtFields" + number, &frame);
        return arrange::field(lblFields(index), txtFields(index));
    };
    const auto list = [this](Label& label, ComboBox& combo, const char* name, Frame* frame) {
        add(label, std::string("lbl") + name, frame);
        add(combo, std::string("cbo") + name, frame);
        return arrange::field(label, combo);
    };
    /// The first of several fields in a line lends its label to the line.
    const auto line = [](std::vector<Arrangement> inLine) {
        Arrangement first = inLine.front();
        inLine.front() = arrange::plain(*first.control);
        return arrange::field(*first.label, std::move(inLine));
    };

    add(fraIdentificacion, "fraIdentificacion");
    add(txtFields(0), "txtFields(0)", &fraIdentificacion);
    Frame& who = fraIdentificacion;
    std::vector<Arrangement> identity;
    identity.push_back(line({text(5, who), list(lblDocType, cboDocType, "DocType", &who)}));
    identity.push_back(text(1, who));
    identity.push_back(line({text(2, who), text(3, who)}));
    identity.push_back(text(4, who));

    add(fraDireccion, "fraDireccion");
    Frame& where = fraDireccion;
    std::vector<Arrangement> address;
    address.push_back(line({list(lblTipoVia, cboTipoVia, "TipoVia", &where), text(45, where)}));
    address.push_back(line({text(44, where), text(43, where), text(48, where), text(46, where), text(47, where)}));
    address.push_back(line({text(49, where), text(50, where)}));
    Arrangement province = list(lblProvincias, cboProvincias, "Provincias", &where);
    add(txtFields(10), "txtFields(10)", &where);
    address.push_back(
        line({std::move(province), arrange::plain(txtFields(10)), list(lblPais, cboPais, "Pais", &where)}));
    address.push_back(line({text(6, where), text(8, where), text(7, where)}));
    address.push_back(text(9, where));

    std::vector<Arrangement> withholding;
    withholding.push_back(list(lblClaveRetencion, cboClaveRetencion, "ClaveRetencion", nullptr));
    withholding.push_back(list(lblSubclave, cboSubclave, "Subclave", nullptr));
    add(navegacion.marco, "fraNavegacion");
    add(navegacion.cmdNav, &navegacion.marco);
    add(cmdSalvar, "cmdSalvar");
    add(cmdBorrar, "cmdBorrar");
    add(cmdSalir, "cmdSalir");
    add(lblTeclas, "lblTeclas");

    layOut(arrange::column(
        {arrange::framed(fraIdentificacion, {arrange::fields(std::move(identity))}),
         arrange::framed(fraDireccion, {arrange::fields(std::move(address))}), arrange::fields(std::move(withholding)),
         arrange::row({navegacion.disposicion(), arrange::buttons({&cmdSalvar, &cmdBorrar, &cmdSalir})}),
         arrange::plain(lblTeclas)}));
}

}  // namespace FendaMaestros
