#include "taxid/frmNif.h"

#include "session/Literal.h"
#include "taxid/BuscarNif.h"
#include "taxid/ClavesRetencion.h"
#include "taxid/ExpresionNombre.h"
#include "taxid/Validacion.h"
#include "toolkit/Format.h"
#include "toolkit/Text.h"
#include "ui/CodedList.h"
#include "ui/SessionAccess.h"
#include "ui/Version.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

constexpr int buscarPorDocumento = 1;
constexpr int buscarPorNombre = 2;
constexpr std::int64_t codigoPais = 11;
constexpr std::int64_t provinciaExtranjera = 99;

std::string dosCifras(std::int64_t code) { return format(code, "00"); }

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

// --- navigation and keys

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

}  // namespace FendaMaestros
