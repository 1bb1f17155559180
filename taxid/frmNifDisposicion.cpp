#include "taxid/frmInfNif.h"
#include "taxid/frmNif.h"

namespace FendaMaestros {

void frmNif::prepararCampos() {
    struct TextoDe {
        int index;
        int maxLength;
        const char* caption;
    };
    static constexpr TextoDe fields[] = {
        {Documento, 100, "Documento"},
        {Nombre, 100, "Nombre o Razon Social"},
        {Apellido1, 100, "Primer Apellido"},
        {Apellido2, 100, "Segundo Apellido"},
        {NombreComercial, 100, "Nombre Comercial"},
        {Via, 100, "Nombre de la Via"},
        {Numero, 4, "Numero"},
        {Escalera, 2, "Escal"},
        {Bloque, 3, "Bloque"},
        {Piso, 2, "Piso"},
        {Puerta, 2, "Puerta"},
        {CodigoPostal, 5, "C.P."},
        {Poblacion, 100, "Población (F10 búsqueda)"},
        {TelefonoFijo, 15, "Telefono fijo"},
        {TelefonoMovil, 15, "Telefono movil"},
        {Fax, 15, "Fax"},
        {Correo, 50, "Correo electronico"},
    };
    for (const TextoDe& field : fields) {
        lblFields(field.index).Caption = field.caption;
        txtFields(field.index).MaxLength = field.maxLength;
    }
    txtFields(Provincia).MaxLength = 50;
    txtFields(Cliente).MaxLength = 8;
    txtFields(Cliente).Visible = txtFields(Provincia).Visible = false;
    for (const int index : {Cliente, NombreComercial, Bloque}) txtFields(index).Enabled = false;
    for (const auto& [index, field] : txtFields.elements())
        editField(*field, [this, number = index] { salirCampo(number); });

    TextBox& document = txtFields(Documento);
    const KeyHint byDocument{{key::F(1)}, "Buscar por documento"}, byName{{key::F(2)}, "Buscar por nombre"};
    Keys.insert(Keys.begin(), {byDocument, byName});
    document.Searches = {byDocument, byName};
    txtFields(Nombre).Searches = {byName};
    txtFields(Poblacion).Searches = {{{key::F(10)}, "Buscar la población"}};
    document.KeyPress = [this, &document](int& ascii) {
        // Without its letters, what is no N.I.F. would become somebody else's.
        if (cboDocType.ListIndex() == documento::Nif)
            Ayuda.FiltrarTecla(document, ascii, false, AyudaCampos::withLetters);
    };
    document.Change = [this] { decirOtraFicha(); };
    TextBox& postalCode = txtFields(CodigoPostal);
    postalCode.KeyPress = [this, &postalCode](int& ascii) { Ayuda.FiltrarTecla(postalCode, ascii, false, 0); };
}

void frmNif::prepararMandos() {
    for (const char* type : {"C.I.F.", "N.I.F.", "N.I.E.", "Otros"}) cboDocType.AddItem(type);
    cboDocType.Click = [this] { elegirTipoDocumento(); };
    cboPais.Click = [this] { elegirPais(); };
    cboClaveRetencion.Click = [this] { elegirClaveRetencion(); };
    cmdSalvar.Click = [this] { guardar(); };
    cmdBorrar.Click = [this] { borrar(); };
    cmdSustituir.Click = [this] { sustituir(); };
    cmdInforme.Click = [] { frmInfNif().show(); };
    cmdBorrar.Enabled = cmdSustituir.Enabled = false;
    cmdSalir.Click = [this] { unload(); };
    cmdSalvar.Key = {key::F(5)};
    lblTeclas.Caption =
        "F1 buscar por documento · F2 buscar por nombre · F5 guardar · Intro campo siguiente · Esc salir · Mayús+F1 "
        "teclas";
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
    add(txtFields(Cliente), "txtFields(0)", &fraIdentificacion);
    Frame& who = fraIdentificacion;
    std::vector<Arrangement> identity;
    identity.push_back(line({text(Documento, who), list(lblDocType, cboDocType, "DocType", &who)}));
    identity.push_back(text(Nombre, who));
    identity.push_back(line({text(Apellido1, who), text(Apellido2, who)}));
    identity.push_back(text(NombreComercial, who));

    add(fraDireccion, "fraDireccion");
    Frame& where = fraDireccion;
    std::vector<Arrangement> address;
    address.push_back(line({list(lblTipoVia, cboTipoVia, "TipoVia", &where), text(Via, where)}));
    address.push_back(line(
        {text(Numero, where), text(Escalera, where), text(Bloque, where), text(Piso, where), text(Puerta, where)}));
    address.push_back(line({text(CodigoPostal, where), text(Poblacion, where)}));
    Arrangement province = list(lblProvincias, cboProvincias, "Provincias", &where);
    add(txtFields(Provincia), "txtFields(10)", &where);
    address.push_back(
        line({std::move(province), arrange::plain(txtFields(Provincia)), list(lblPais, cboPais, "Pais", &where)}));
    address.push_back(line({text(TelefonoFijo, where), text(TelefonoMovil, where), text(Fax, where)}));
    address.push_back(text(Correo, where));

    std::vector<Arrangement> withholding;
    withholding.push_back(line({list(lblClaveRetencion, cboClaveRetencion, "ClaveRetencion", nullptr),
                                list(lblSubclave, cboSubclave, "Subclave", nullptr)}));
    add(navegacion.frame, "fraNavegacion");
    add(navegacion.cmdNav, &navegacion.frame);
    add(cmdSalvar, "cmdSalvar");
    add(cmdBorrar, "cmdBorrar");
    add(cmdSustituir, "cmdSustituir");
    add(cmdInforme, "cmdInforme");
    add(cmdSalir, "cmdSalir");
    add(lblTeclas, "lblTeclas");

    layOut(arrange::column({arrange::framed(fraIdentificacion, {arrange::fields(std::move(identity))}),
                            arrange::framed(fraDireccion, {arrange::fields(std::move(address))}),
                            arrange::fields(std::move(withholding)), navegacion.arrangement(),
                            arrange::buttons({&cmdSalvar, &cmdBorrar, &cmdSustituir, &cmdInforme, &cmdSalir}),
                            arrange::plain(lblTeclas)}));
}

}  // namespace FendaMaestros
