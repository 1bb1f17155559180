#include "taxid/BuscaPoblacion.h"
#include "taxid/BuscarNif.h"
#include "taxid/ClavesRetencion.h"
#include "taxid/Explicacion.h"
#include "taxid/Validacion.h"
#include "taxid/frmNif.h"
#include "toolkit/Format.h"
#include "toolkit/Text.h"
#include "ui/CodedList.h"
#include "ui/WorkContext.h"

/// The fields of the register of identities: what happens when they are left, and what is chosen in its lists.
namespace FendaMaestros {

namespace {

constexpr std::size_t cifrasCodigoPostal = 5;

}  // namespace

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
    // The type of the entry on the screen says nothing of an organisation that is typed over it.
    const bool isLeftOver = nIdActual_ > 0 && cboDocType.ListIndex() == nifLeido_.tipoDocumento;
    if (isLeftOver && explainIdentifier(document).kind == IdentifierKind::Organisation)
        cboDocType.setListIndex(documento::Cif);
    if (text::isDigit(document.front())) cboDocType.setListIndex(documento::Nif);
    if (cboDocType.ListIndex() == documento::Nif) document = conLetra(document);
}

void frmNif::decirOtraFicha() {
    const DocumentoTecleado typed(txtFields(Documento).Text, cboDocType.ListIndex() != documento::Otros);
    const OtraFicha other = avisoOtraFicha_.buscar(typed, sExpresionNombre_, nIdActual_);
    if (other.documento.empty()) return;
    tell(other.texto(typed.documento), other.igual(typed.documento) ? StatusKind::Plain : StatusKind::Warning);
}

/// Of an entry that is stored only a slip is said: it may have a document of another kind.
void frmNif::aconsejar() {
    const bool stored = nIdActual_ > 0;
    const std::string& document = txtFields(Documento).Text;
    const OtraFicha other = avisoOtraFicha_.encontrada(document);
    if (!stored && !other.documento.empty()) tellBehind(other.texto(document), StatusKind::Warning);
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
        situarProvincia(format(Variant(chosen->codigoProvincia).integer(), "00"));
}

}  // namespace FendaMaestros
