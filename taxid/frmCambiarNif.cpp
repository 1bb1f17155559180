#include "taxid/frmCambiarNif.h"

#include <stdexcept>

#include "session/ErrorBd.h"
#include "session/Literal.h"
#include "taxid/Explicacion.h"
#include "taxid/ExpresionNombre.h"
#include "taxid/Validacion.h"
#include "toolkit/Format.h"
#include "toolkit/Text.h"
#include "ui/RowWrite.h"
#include "ui/SessionAccess.h"
#include "ui/Transaction.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

std::string rowOf(std::int64_t id) { return "SELECT * FROM KXComun.dbo.Nif WHERE Nif_Id = " + std::to_string(id); }

std::string invoices(int count) { return counted(count, "factura", "facturas"); }

}  // namespace

frmCambiarNif::frmCambiarNif(std::int64_t nIdNif) : nIdNif_(nIdNif) {
    Caption = sTituloVentana = "Cambio de Nif/Cif";
    fraActual.Caption = "Cif/Nif actual";
    fraNuevo.Caption = "Cif/NIF nuevo";
    lblFields(Nombre).Caption = "Nombre o Razon Social";
    lblFields(Apellido1).Caption = "Primer Apellido";
    lblFields(Apellido2).Caption = "Segundo Apellido";
    lblFields(Actual).Caption = lblFields(Nuevo).Caption = "Documento";
    for (const int field : {Nombre, Apellido1, Apellido2, Actual, Nuevo}) txtFields(field).MaxLength = 100;
    for (const int unused : {0, 4}) txtFields(unused).Enabled = txtFields(unused).Visible = false;
    for (const auto& [index, field] : txtFields.elements()) editField(*field);
    for (const int document : {Actual, Nuevo})
        editField(txtFields(document), [this, document] { dejarDocumento(document); });
    txtFields(Nuevo).Change = [this] { aconsejar(false); };

    for (const char* type : {"C.I.F.", "N.I.F.", "N.I.E.", "Otros"}) cboDocType.AddItem(type);
    cboDocType.Click = [this] { elegirTipo(); };
    Check1.Click = [this] { anunciarFacturas(); };
    cmdSalvar.Click = [this] { guardar(); };
    cmdSalir.Click = [this] { unload(); };
    disponer();
}

/// The new document comes first: it is what the screen is opened for.
void frmCambiarNif::disponer() {
    add(fraNuevo, "fraNuevo");
    add(lblFields(Nuevo), "lblFields(6)", &fraNuevo);
    add(txtFields(Nuevo), "txtFields(6)", &fraNuevo);
    add(Check1, "Check1");
    add(fraActual, "fraActual");
    for (const int field : {Actual, Nombre, Apellido1, Apellido2}) {
        const std::string number = "(" + std::to_string(field) + ")";
        add(lblFields(field), "lblFields" + number, &fraActual);
        add(txtFields(field), "txtFields" + number, &fraActual);
    }
    for (const int unused : {0, 4}) add(txtFields(unused), "txtFields(" + std::to_string(unused) + ")", &fraActual);
    add(lblDocType, "lblDocType", &fraActual);
    add(cboDocType, "cboDocType", &fraActual);
    add(cmdSalvar, "cmdSalvar");
    add(cmdSalir, "cmdSalir");

    using namespace arrange;
    layOut(column({
        framed(fraActual, {fields({
                              field(lblFields(Actual), {plain(txtFields(Actual)), field(lblDocType, cboDocType)}),
                              field(lblFields(Nombre), txtFields(Nombre)),
                              field(lblFields(Apellido1),
                                    {plain(txtFields(Apellido1)), field(lblFields(Apellido2), txtFields(Apellido2))}),
                          })}),
        framed(fraNuevo, {fields({field(lblFields(Nuevo), txtFields(Nuevo))})}),
        plain(Check1),
        buttons({&cmdSalvar, &cmdSalir}),
    }));
}

void frmCambiarNif::onLoad() {
    Screen::onLoad();
    sExpresionNombre_ = expresionNombre();
    nEjercicio_ = ejercicioActivo();
    Check1.Caption = "Sustituir Cif/Nif en el registro de facturas sólo en el ejercicio activo (" +
                     std::to_string(nEjercicio_) + ")";
    cargar();
}

void frmCambiarNif::cargar() {
    rsLeida_ = read(rowOf(nIdNif_));
    const auto& row = rsLeida_;
    cmdSalvar.Enabled = !row->Eof();
    if (row->Eof()) return tell("No hay ninguna identidad que cambiar");
    txtFields(Nombre).Text = row->Fields("Nif_nom").Value.text();
    txtFields(Apellido1).Text = row->Fields("Nif_APE1").Value.text();
    txtFields(Apellido2).Text = row->Fields("Nif_APE2").Value.text();
    txtFields(Actual).Text = row->Fields("Nif_Doc").Value.text();
    const auto type = static_cast<int>(row->Fields("Nif_TIPDOC").Value.integer());
    cboDocType.setListIndex(type >= 0 && type < cboDocType.ListCount() ? type : -1);
}

void frmCambiarNif::elegirTipo() {
    const bool person = cboDocType.ListIndex() != documento::Cif;
    txtFields(Apellido1).Enabled = txtFields(Apellido2).Enabled = person;
}

void frmCambiarNif::dejarDocumento(int field) {
    std::string& document = txtFields(field).Text;
    document = text::upper(text::trimEnd(document));
    if (field == Actual && cboDocType.ListIndex() == documento::Nif && !document.empty()) document = conLetra(document);
    if (field == Nuevo && document != sAconsejado_) {
        aconsejar(true);
        sAconsejado_ = document;
    }
    cmdSalvar.Enabled = !msBuscarCif(document);
    if (!cmdSalvar.Enabled) setFocus(txtFields(field));
}

bool frmCambiarNif::msBuscarCif(const std::string& document) {
    if (document.empty()) return false;
    const auto owner =
        read("SELECT *," + sExpresionNombre_ + "As Nombre FROM KXComun.dbo.Nif WHERE Nif_Doc = " + literal(document));
    if (owner->Eof()) return false;
    return !confirmInPlace("Cif/Nif ya registrado pertenece a " + owner->Fields("nombre").Value.text() +
                               "\r\nConfirma el CIF/Nif introducido",
                           message::Critical, sTituloVentana);
}

void frmCambiarNif::aconsejar(bool left) {
    const std::string typed = text::trim(txtFields(Nuevo).Text);
    tell({});
    if (typed.empty()) return;
    aconsejarForma(typed, left);
    const DocumentoTecleado document(typed, false);
    const OtraFicha other = avisoOtraFicha_.buscar(document, sExpresionNombre_, nIdNif_);
    if (other.documento.empty()) return;
    tellInFront(other.texto(document.documento));
    lblEstado.Kind = StatusKind::Warning;
}

void frmCambiarNif::aconsejarForma(const std::string& typed, bool left) {
    const IdentifierExplanation explained = explainIdentifier(typed);
    if (explained.valid && explained.normalForm != typed) return tell("Su forma normal es " + explained.normalForm);
    const bool unfinished = !left && explained.fault == IdentifierFault::Form;
    tell(advice(explained), unfinished ? StatusKind::Plain : adviceKind(explained));
}

// --- save

std::string frmCambiarNif::condicionFacturas() const {
    return " WHERE Fac_Doc = " + literal(txtFields(Actual).Text) +
           " AND year(Fac_Fecha) = " + std::to_string(nEjercicio_);
}

void frmCambiarNif::anunciarFacturas() {
    if (!Check1.Value()) return;
    try {
        tell("Se cambiarán " + invoices(facturasDelEjercicio()) + " de " + std::to_string(nEjercicio_));
    } catch (const ErrorBd&) {
        // What is wrong with the database is said when it is to be changed.
    }
}

int frmCambiarNif::facturasDelEjercicio() const {
    return static_cast<int>(read("SELECT COUNT(Fac_Id) FROM Fac" + condicionFacturas())->cell(0, 0).integer());
}

std::string frmCambiarNif::nombreCompleto() const {
    const bool nameFirst = instanciaActual().sesion().Parametros().Item("PAR_ORCONTANOM").Value.integer() == 0;
    const std::string name = txtFields(Nombre).Text;
    const std::string surnames[] = {text::trim(txtFields(Apellido1).Text), text::trim(txtFields(Apellido2).Text)};
    std::string joined = nameFirst ? text::trimEnd(name) : std::string();
    const auto append = [&joined](const std::string& part) {
        if (!part.empty()) joined += (joined.empty() ? "" : " ") + part;
    };
    for (const std::string& surname : surnames) append(surname);
    if (!nameFirst) append(text::trim(name));
    return joined;
}

std::string frmCambiarNif::cambio() const {
    const std::string& current = txtFields(Actual).Text;
    const std::string& changed = txtFields(Nuevo).Text;
    return text::trim(changed).empty() ? "la actualización de datos para el Cif/Nif " + current
                                       : "el cambio del Cif/Nif " + current + " por " + changed;
}

/// Names alone are not stored by a save.
std::string frmCambiarNif::unsaved() const {
    const bool nothing = text::trim(txtFields(Nuevo).Text).empty() && !Check1.Value();
    return bGuardado_ || nothing ? std::string() : cambio();
}

void frmCambiarNif::guardar() {
    if (!confirmInPlace("Confirma " + cambio(), message::Question, sTituloVentana)) return;
    try {
        const int count = saveWithPatience([this] { return grabar(); });
        bGuardado_ = true;
        if (Check1.Value()) resumen_ = "Cambiadas " + invoices(count) + " de " + std::to_string(nEjercicio_);
    } catch (const std::exception& error) {
        markPendingMessage();
        ask(error.what(), message::Ok, {});
        return;
    }
    markPendingMessage();
    ask("Proceso finalizado satisfactoriamente", message::Ok, {});
    unload();
}

int frmCambiarNif::grabar() {
    SesionBd& session = instanciaActual().sesion();
    const std::string changed = text::trim(txtFields(Nuevo).Text);
    if (Check1.Value() && text::trim(txtFields(Actual).Text).empty())
        throw std::runtime_error("No hay ningún Cif/Nif actual: sus facturas no se pueden buscar.");

    Transaction transaction(session.Conexion());
    const auto stored = read(rowOf(nIdNif_));
    if (stored->Eof()) throw std::runtime_error("Otro programa ha eliminado este CIF/NIF.");
    if (!stored->sameContents(*rsLeida_))
        throw std::runtime_error(
            "Otro programa ha cambiado este CIF/NIF. Salga y vuelva a abrirlo para ver cómo está.");
    if (!changed.empty()) {
        RowWrite identity(session, "KXComun.dbo.Nif");
        identity.column("Nif_Doc", valor::Texto, txtFields(Nuevo).Text);
        identity.update(" WHERE Nif_Id = " + std::to_string(nIdNif_));
    }
    int count = 0;
    if (Check1.Value()) {
        count = facturasDelEjercicio();
        RowWrite invoice(session, "Fac");
        if (!changed.empty()) invoice.column("Fac_Doc", valor::Texto, txtFields(Nuevo).Text);
        invoice.column("Fac_Rsocial", valor::Texto, nombreCompleto());
        invoice.update(condicionFacturas());
    }
    transaction.commit();
    return count;
}

}  // namespace FendaMaestros
