#include "taxid/frmNif.h"

#include <stdexcept>

#include "session/ErrorBd.h"
#include "session/Literal.h"
#include "taxid/BuscaPoblacion.h"
#include "taxid/BuscarNif.h"
#include "taxid/ClavesRetencion.h"
#include "taxid/Explicacion.h"
#include "taxid/ExpresionNombre.h"
#include "taxid/Validacion.h"
#include "taxid/frmCambiarNif.h"
#include "toolkit/Format.h"
#include "toolkit/Text.h"
#include "ui/CodedList.h"
#include "ui/SessionAccess.h"
#include "ui/Transaction.h"
#include "ui/Version.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

constexpr int buscarPorDocumento = 1;
constexpr int buscarPorNombre = 2;
constexpr std::int64_t codigoPais = 11;
constexpr std::int64_t provinciaExtranjera = 99;
constexpr std::size_t cifrasCodigoPostal = 5;

std::string dosCifras(std::int64_t code) { return format(code, "00"); }

/// Nothing when the register has no such entry.
std::optional<NifRecord> registrado(std::int64_t id) {
    const auto rows = read("SELECT * FROM KXComun.dbo.Nif WHERE Nif_Id = " + std::to_string(id));
    return rows->Eof() ? std::nullopt : std::optional(leerNif(*rows));
}

}  // namespace

frmNif::frmNif(const std::string& sNif, const std::string& sNombre)
    : sNifInicial_(sNif),
      sNombreInicial_(sNombre),
      bAbiertaConDocumento_(!text::trim(sNif).empty()),
      bCargaPendiente_(bAbiertaConDocumento_) {
    sTituloVentana = "Maestro de Cif/Nif";
    prepararCampos();
    prepararMandos();
    disponer();
}

// --- opening

void frmNif::onLoad() {
    Screen::onLoad();
    Caption = "Maestro de Cif/Nif Versión: " + componentVersion();
    cboDocType.setListIndex(documento::Cif);
    sExpresionNombre_ = expresionNombre();
    cargarListas();
    jCargaClavesRetencion(cboClaveRetencion, "-", ejercicio(), false);
    txtFields(Cliente).Tag = "CODCLI";
    anotarMostrado();
    if (bAbiertaConDocumento_) txtFields(Documento).Text = sNifInicial_;
}

void frmNif::onActivate() {
    if (!bCargaPendiente_) return;
    bCargaPendiente_ = false;
    salirCampo(Documento);
    if (nIdActual_ > 0) return;
    TextBox& name = txtFields(Nombre);
    name.Text = text::left(sNombreInicial_, static_cast<std::size_t>(name.MaxLength));
    setFocus(name);
}

void frmNif::cargarListas() {
    const auto streets = read("Select * from KXComun.dbo.TVI");
    for (; !streets->Eof(); streets->MoveNext())
        cboTipoVia.AddItem(
            codedList::item(streets->Fields("TVI_COD").Value.text(), streets->Fields("TVI_NOM").Value.text()));

    const std::int64_t own = instanciaActual().sesion().Parametros().Item("Par_Provincia").Value.integer();
    const auto provinces = read("Select * from KXComun.dbo.PROV");
    for (; !provinces->Eof(); provinces->MoveNext()) {
        const std::int64_t code = provinces->Fields("PROV_COD").Value.integer();
        if (code == provinciaExtranjera) nProvincia99_ = cboProvincias.ListCount();
        if (code == own) nProvinciaPropia_ = cboProvincias.ListCount();
        cboProvincias.AddItem(codedList::item(dosCifras(code), provinces->Fields("PROV_NOM").Value.text()));
    }
    cboProvincias.setListIndex(nProvinciaPropia_);

    const auto countries = read("Select * from KXComun.dbo.PAIS ORDER BY Pais_Nom");
    for (; !countries->Eof(); countries->MoveNext()) {
        const Variant code = countries->Fields("Pais_Cod").Value;
        if (code.integer() == codigoPais) nPaisPropio_ = cboPais.ListCount();
        cboPais.AddItem(codedList::item(code.text(), countries->Fields("Pais_Nom").Value.text()));
    }
    cboPais.setListIndex(nPaisPropio_);
}

std::int16_t frmNif::ejercicio() { return ejercicioActivo(); }

// --- search, and what the screen shows

std::int64_t frmNif::msBuscarCif(const std::string& sDoc, int nModo, std::int64_t nId) {
    const BusyPointer busy(desktop());
    if (nModo != 0) {
        nId = nModo == buscarPorDocumento ? buscarNifPorDocumento(Ayuda, sExpresionNombre_) : buscarNifPorNombre(Ayuda);
        if (nId < 1) return nIdActual_ > 0 ? nIdActual_ : -1;
    }
    const auto found = leer(nId < 1 ? "Nif_Doc = " + literal(sDoc) : "Nif_Id = " + std::to_string(nId));
    if (found)
        mostrar(*found);
    else if (nIdActual_ > 0)
        vaciar();
    return found ? nIdActual_ : -1;
}

std::optional<frmNif::Ficha> frmNif::leer(const std::string& where) {
    const auto rows = read("SELECT * FROM KXComun.dbo.Nif WHERE " + where);
    if (rows->Eof()) return std::nullopt;
    Ficha ficha{.nif = leerNif(*rows)};
    const auto uses = read("SELECT COUNT(Fac_Id) FROM Fac WHERE Fac_Doc = " + literal(ficha.nif.documento));
    ficha.conFacturas = uses->cell(0, 0).integer() != 0;
    return ficha;
}

void frmNif::mostrar(const Ficha& ficha) {
    const NifRecord& nif = ficha.nif;
    const bool knownType = nif.tipoDocumento >= 0 && nif.tipoDocumento < cboDocType.ListCount();
    nIdActual_ = nif.id;
    nifLeido_ = nif;
    sDocumentoTratado_ = nif.documento;
    for (const auto& [index, field] : txtFields.elements()) field->Text.clear();
    for (const auto& [index, member] : textos) txtFields(index).Text = nif.*member;
    txtFields(Documento).Text = nif.documento;

    cboDocType.setListIndex(knownType ? nif.tipoDocumento : -1);
    cboTipoVia.setListIndex(codedList::position(cboTipoVia, 2, nif.tipoVia));
    cboPais.setListIndex(codedList::position(cboPais, 3, nif.pais));
    if (paisPropio()) {
        const bool coded = Variant(text::left(nif.provincia, 2)).integer() > 0;
        cboProvincias.setListIndex(codedList::position(cboProvincias, 2, coded ? nif.provincia : nif.codigoPostal));
    } else {
        txtFields(Provincia).Text = nif.provincia;
    }
    nProvinciaDejada_ = nProvincia99_;
    situarClave(nif.claveRetencion, nif.subclave);
    cmdBorrar.Enabled = !ficha.conFacturas;
    cmdSustituir.Enabled = true;
    anotarMostrado();
}

/// The trade name is not stored, and goes on being that of the entry on the screen.
void frmNif::mostrarInsertada(const Ficha& ficha) {
    const std::string tradeName = txtFields(NombreComercial).Text;
    mostrar(ficha);
    txtFields(NombreComercial).Text = tradeName;
}

void frmNif::vaciar() {
    nIdActual_ = 0;
    nifLeido_ = {};
    sDocumentoTratado_.clear();
    for (const auto& [index, field] : txtFields.elements()) field->Text.clear();
    cboDocType.setListIndex(documento::Cif);
    cboTipoVia.setListIndex(-1);
    cboPais.setListIndex(nPaisPropio_);
    cboProvincias.setListIndex(nProvinciaPropia_);
    situarClave({}, {});
    cmdBorrar.Enabled = cmdSustituir.Enabled = false;
    anotarMostrado();
}

NifRecord frmNif::enPantalla() const {
    // The first item of the lists of keys stands for none.
    const auto chosenKey = [](const ComboBox& keys, std::size_t length) {
        return keys.ListIndex() > 0 ? codedList::code(keys, length) : std::string();
    };
    NifRecord nif;
    for (const auto& [index, member] : textos) nif.*member = text::trim(txtFields(index).Text);
    nif.id = nIdActual_;
    nif.tipoDocumento = cboDocType.ListIndex();
    nif.documento = txtFields(Documento).Text;
    nif.tipoVia = codedList::codeOr(cboTipoVia, 2, nifLeido_.tipoVia);
    nif.provincia = paisPropio() ? codedList::codeOr(cboProvincias, 2, nifLeido_.provincia) : txtFields(Provincia).Text;
    nif.pais = codedList::codeOr(cboPais, 3, nifLeido_.pais);
    nif.claveRetencion = chosenKey(cboClaveRetencion, 1);
    nif.subclave = chosenKey(cboSubclave, 2);
    return nif;
}

/// A document that has been typed, and its type, are for looking for another entry, and change nothing of this one.
std::string frmNif::unsaved() const {
    NifRecord typed = enPantalla();
    const bool stored = nIdActual_ > 0;
    if (!stored || typed.documento != nifMostrado_.documento) typed.tipoDocumento = nifMostrado_.tipoDocumento;
    typed.documento = stored ? nifMostrado_.documento : sDocumentoTratado_;
    if (typed == nifMostrado_) return {};
    std::string shown;
    for (const std::string& part : {typed.documento, typed.nombre, typed.apellido1, typed.apellido2})
        if (!part.empty()) shown += (shown.empty() ? "" : " ") + part;
    return shown.empty() ? "una ficha sin documento ni nombre" : shown;
}

// --- leaving fields, choosing

bool frmNif::salirCampo(int index) {
    txtFields(index).Text = text::trim(txtFields(index).Text);
    switch (index) {
        case Nombre:
        case Apellido1:
        case Apellido2:
            componerNombreComercial(index);
            return true;
        case Documento:
            return salirDocumento();
        case CodigoPostal:
            salirCodigoPostal();
            return true;
        default:
            return true;
    }
}

/// The trade name grows with each part of the name that is left, as long as the parts before it are there.
void frmNif::componerNombreComercial(int index) {
    TextBox& tradeName = txtFields(NombreComercial);
    if (txtFields(Cliente).Enabled || (index == Nombre && !tradeName.Text.empty())) return;
    std::string joined;
    for (int part = Nombre; part <= index; ++part) {
        if (txtFields(part).Text.empty()) return;
        joined += (joined.empty() ? "" : " ") + txtFields(part).Text;
    }
    tradeName.Text = joined;
}

bool frmNif::salirDocumento() {
    TextBox& document = txtFields(Documento);
    if (document.Text.empty()) return true;
    document.Text = text::upper(document.Text);
    const bool stored = nIdActual_ > 0 && document.Text == text::upper(nifLeido_.documento);
    if (!stored) completarDocumento();
    if (document.Text.empty() || text::equalIgnoringCase(document.Text, sDocumentoTratado_)) return true;

    const std::string typed = document.Text;
    const int type = cboDocType.ListIndex();
    replacing([&] { msBuscarCif(typed); });
    if (nIdActual_ > 0) {
        sDocumentoTratado_ = typed;
        aconsejar();
        return false;
    }
    document.Text = typed;
    cboDocType.setListIndex(type);
    aconsejar();
    if (!bAbiertaConDocumento_ &&
        !confirmInPlace("Cif/Nif no encontrado, confirma que desea crearlo", message::Question, sTituloVentana)) {
        setFocus(document);
        return false;
    }
    sDocumentoTratado_ = typed;
    return true;
}

void frmNif::completarDocumento() {
    std::string& document = txtFields(Documento).Text;
    if (cboDocType.ListIndex() == documento::Otros) return;
    if (text::isDigit(document.front())) cboDocType.setListIndex(documento::Nif);
    if (cboDocType.ListIndex() == documento::Nif) document = conLetra(document);
}

void frmNif::decirOtraFicha() {
    const DocumentoTecleado typed(txtFields(Documento).Text, cboDocType.ListIndex() != documento::Otros);
    if (typed.documento.empty()) return;
    if (std::pair wanted(typed.documento, nIdActual_); wanted != otraBuscada_) {
        try {
            otraFicha_ = buscarOtraFicha(typed, sExpresionNombre_, nIdActual_);
        } catch (const ErrorBd&) {
            // What is wrong with the database is said when the document is looked up.
            return;
        }
        otraBuscada_ = std::move(wanted);
    }
    if (otraFicha_.documento.empty()) return;
    tell(otraFicha_.texto(typed.documento),
         otraFicha_.igual(typed.documento) ? StatusKind::Plain : StatusKind::Warning);
}

/// Of an entry that is stored only a slip is said: it may have a document of another kind.
void frmNif::aconsejar() {
    const bool stored = nIdActual_ > 0;
    const std::string& document = txtFields(Documento).Text;
    if (!stored && !otraFicha_.documento.empty() && document == otraBuscada_.first)
        tellBehind(otraFicha_.texto(document), StatusKind::Warning);
    if (cboDocType.ListIndex() == documento::Otros) return;
    const IdentifierExplanation explained = explainIdentifier(document);
    const StatusKind kind = adviceKind(explained);
    const bool wrong = stored ? explained.fault == IdentifierFault::ControlWrong : kind == StatusKind::Warning;
    if (wrong || (!stored && lblEstado.Caption.empty())) tellBehind(advice(explained), kind);
}

void frmNif::salirCodigoPostal() {
    const std::string postalCode = txtFields(CodigoPostal).Text;
    TextBox& town = txtFields(Poblacion);
    if (text::length(postalCode) != cifrasCodigoPostal || !town.Text.empty()) return;
    const std::string country = cboPais.Text();
    town.Text = FnBuscaPoblacion(country.substr(0, country.find(" - ")), postalCode);
    situarProvincia(postalCode);
}

void frmNif::elegirTipoDocumento() {
    const bool person = cboDocType.ListIndex() != documento::Cif;
    txtFields(Apellido1).Enabled = txtFields(Apellido2).Enabled = person;
}

/// Passing over other countries in the list leaves the province that there was.
void frmNif::elegirPais() {
    const bool wasOwn = cboProvincias.Visible;
    cboProvincias.Visible = paisPropio();
    txtFields(Provincia).Visible = !paisPropio();
    if (wasOwn && !paisPropio()) nProvinciaDejada_ = cboProvincias.ListIndex();
    if (!paisPropio()) cboProvincias.setListIndex(nProvincia99_);
    if (!wasOwn && paisPropio() && cboProvincias.ListIndex() == nProvincia99_)
        cboProvincias.setListIndex(nProvinciaDejada_);
}

/// Passing over other keys in the list leaves the subkey that there was.
void frmNif::elegirClaveRetencion() {
    if (!sClave_.empty()) nSubclavesDejadas_[sClave_] = cboSubclave.ListIndex();
    sClave_ = codedList::code(cboClaveRetencion, 1);
    jCargaClavesRetencion(cboSubclave, sClave_, ejercicio(), false);
    const auto before = nSubclavesDejadas_.find(sClave_);
    if (before != nSubclavesDejadas_.end()) cboSubclave.setListIndex(before->second);
}

/// A key that the fiscal year does not have counts as none, as do the first subkey and those that the key does not
/// have: a save takes it away, and the person is told.
void frmNif::situarClave(const std::string& key, const std::string& subkey) {
    sClave_.clear();
    nSubclavesDejadas_.clear();
    const int item = text::trim(key).empty() ? 0 : codedList::position(cboClaveRetencion, 1, key);
    cboClaveRetencion.setListIndex(std::max(0, item));
    const int subitem = codedList::position(cboSubclave, 2, subkey);
    if (subitem >= 0) cboSubclave.setListIndex(subitem);
    if (item < 0)
        tell("La clave de retención " + key + " no existe en este ejercicio: al guardar se quita.");
    else if (subitem < 1 && !text::trim(subkey).empty())
        tell("La subclave de retención " + subkey + " cuenta como ninguna: al guardar se quita.");
}

/// An unknown code leaves the province as it is.
void frmNif::situarProvincia(const std::string& code) {
    const int index = codedList::position(cboProvincias, 2, code);
    if (index >= 0) cboProvincias.setListIndex(index);
}

void frmNif::buscarPoblacionDir() {
    const auto chosen = buscarPoblacion(Ayuda);
    if (!chosen) return;
    TextBox& postalCode = txtFields(CodigoPostal);
    TextBox& town = txtFields(Poblacion);
    const bool taken = !postalCode.Text.empty() || !town.Text.empty();
    if (taken && !confirmInPlace("Existen datos en los campos C.P. y población, desea sustituirlos ?",
                                 message::Question, "Busqueda de poblaciones"))
        return;
    town.Text = chosen->nombre;
    postalCode.Text = chosen->codigoPostal;
    if (text::isNumericCode(chosen->codigoProvincia))
        situarProvincia(dosCifras(Variant(chosen->codigoProvincia).integer()));
}

/// Through the register in the order of its documents.
void frmNif::navegar(Step step) {
    if (!unsaved().empty() &&
        !confirmInPlace("Hay cambios sin guardar, ¿desea descartarlos?", message::Question, sTituloVentana))
        return;
    const BusyGuard busy(*this);
    const auto found = read("Select top 1 Nif_Id FROM KXComun.dbo.Nif" + destination(recorrido(), step));
    if (!found->Eof()) msBuscarCif({}, 0, found->cell(0, 0).integer());
}

Walk frmNif::recorrido() const {
    constexpr const char* upwards = " ORDER BY Nif_Doc, Nif_Id";
    constexpr const char* downwards = " ORDER BY Nif_Doc DESC, Nif_Id DESC";
    Walk walk{.first = upwards, .last = downwards};
    if (nIdActual_ < 1) return walk;
    const auto beyond = [this](const std::string& comparison) {
        const std::string document = literal(nifLeido_.documento);
        return " WHERE Nif_Doc " + comparison + " " + document + " OR (Nif_Doc = " + document + " AND Nif_Id " +
               comparison + " " + std::to_string(nIdActual_) + ")";
    };
    walk.previous = beyond("<") + downwards;
    walk.next = beyond(">") + upwards;
    return walk;
}

// --- keys

void frmNif::onKeyUp(int& code, int shift) {
    Screen::onKeyUp(code, shift);
    const std::string& document = txtFields(Documento).Text;
    switch (code) {
        case key::F(1):
            replacing([&] { msBuscarCif(document, buscarPorDocumento); });
            break;
        case key::F(2):
            replacing([&] { msBuscarCif(document, buscarPorNombre); });
            break;
        case key::F(5):
            guardarConTecla();
            break;
        case key::F(10):
            if (activeControl() == &txtFields(Poblacion)) buscarPoblacionDir();
            break;
        default:
            break;
    }
}

// --- save and delete

/// The field being edited takes effect first, as when the button is clicked.
void frmNif::guardarConTecla() {
    if (!canFocus(cmdSalvar)) return;
    for (const auto& [index, field] : txtFields.elements())
        if (activeControl() == field.get() && !salirCampo(index)) return;
    guardar();
}

void frmNif::guardar() {
    const auto isBlank = [this](Campo field) { return text::trim(txtFields(field).Text).empty(); };
    if (isBlank(Documento) && isBlank(Nombre))
        return warn("Debe indicar el documento o el nombre", txtFields(Documento));
    try {
        if (const auto inserted = saveWithPatience([this] { return grabar(); })) mostrarInsertada(*inserted);
    } catch (const SilentRefusal&) {
        return;
    } catch (const std::exception& error) {
        return avisarFallo(error);
    }
    anotarMostrado();
    markPendingMessage();
    ask("Grabación del nif realizada con éxito", message::Information, sTituloVentana);
    if (bAbiertaConDocumento_) unload();
}

std::optional<frmNif::Ficha> frmNif::grabar() {
    SesionBd& session = instanciaActual().sesion();
    Transaction transaction(session.Conexion());
    RowWrite write(session, "KXComun.dbo.Nif");
    describirNif(write, enPantalla());
    if (nIdActual_ < 1) {
        Ficha inserted = insertar(write);
        transaction.commit();
        return inserted;
    }
    actualizar(write);
    NifRecord saved = *registrado(nIdActual_);
    transaction.commit();
    nifLeido_ = std::move(saved);
    return std::nullopt;
}

frmNif::Ficha frmNif::insertar(RowWrite& write) const {
    write.insert();
    const Variant newest = read("SELECT MAX(Nif_Id) FROM kxcomun.dbo.nif")->cell(0, 0);
    Ficha inserted = leer("Nif_Id = " + newest.text()).value();
    if (const std::string& document = inserted.nif.documento; !document.empty())
        requireUnique(*instanciaActual().sesion().Conexion(), "KXComun.dbo.Nif", "Nif_Doc", document);
    return inserted;
}

void frmNif::actualizar(RowWrite& write) {
    const auto stored = registrado(nIdActual_);
    if (stored != nifLeido_) {
        // Leaving the document again reads it again.
        sDocumentoTratado_.clear();
        if (stored)
            throw std::runtime_error(
                "Otro programa ha cambiado este CIF/NIF. Vuelva a buscarlo para ver cómo está ahora.");
        nIdActual_ = 0;
        cmdBorrar.Enabled = cmdSustituir.Enabled = false;
        throw std::runtime_error("Otro programa ha eliminado este CIF/NIF. Si lo guarda otra vez, se crea de nuevo.");
    }
    refusingSilently([&] { write.update(" WHERE Nif_Id = " + std::to_string(nIdActual_)); });
}

void frmNif::borrar() {
    if (!confirmInPlace("Confirma que desea eliminar el CIF/NIF actual", message::Critical, "Edición de CIF/NIF"))
        return;
    try {
        deleteRows(
            instanciaActual().sesion(), "KXComun.dbo.Nif",
            " WHERE Nif_Id = " + std::to_string(nIdActual_) + " AND Nif_Doc = " + literal(txtFields(Documento).Text));
    } catch (const std::exception& error) {
        return avisarFallo(error);
    }
    tell("Borrado " + txtFields(Documento).Text);
    vaciar();
    setFocus(txtFields(Documento));
}

void frmNif::sustituir() {
    frmCambiarNif screen(nIdActual_);
    screen.show();
    const std::string left = lblEstado.Caption;
    replacing([&] {
        if (msBuscarCif({}, 0, nIdActual_) < 1) tell("Otro programa ha eliminado este CIF/NIF");
        if (!screen.resumen().empty()) tell(screen.resumen());
        if (!left.empty()) tellInFront(left);
    });
}

void frmNif::avisarFallo(const std::exception& error) {
    markPendingMessage();
    ask(error.what(), message::Ok, {});
}

}  // namespace FendaMaestros
