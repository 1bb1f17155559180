#include <stdexcept>

#include "session/Literal.h"
#include "taxid/frmCambiarNif.h"
#include "taxid/frmNif.h"
#include "toolkit/Text.h"
#include "ui/SessionAccess.h"
#include "ui/Transaction.h"
#include "ui/WorkContext.h"

/// The commands of the register of identities that write.
namespace FendaMaestros {

namespace {

/// Nothing when the register has no such entry.
std::optional<NifRecord> registrado(std::int64_t id) {
    const auto rows = read("SELECT * FROM KXComun.dbo.Nif WHERE Nif_Id = " + std::to_string(id));
    return rows->Eof() ? std::nullopt : std::optional(leerNif(*rows));
}

}  // namespace

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
    const bool isNew = nIdActual_ < 1;
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
    if (bAbiertaConDocumento_) return unload();
    // Who enters one after the other goes on with the next document.
    if (isNew) setFocus(txtFields(Documento));
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
    avisoOtraFicha_.olvidar();
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
