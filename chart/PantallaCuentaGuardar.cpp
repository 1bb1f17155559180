#include <stdexcept>

#include "chart/DobleTransaccion.h"
#include "chart/PantallaCuenta.h"
#include "session/ErrorBd.h"
#include "session/Literal.h"
#include "toolkit/Text.h"
#include "ui/SessionAccess.h"
#include "ui/WorkContext.h"

/// The commands of the account screens that write.
namespace FendaMaestros {

void PantallaCuenta::avisarGrabacion(const std::string& text) {
    markPendingMessage('E');
    ask(text, message::Ok, {});
}

bool PantallaCuenta::intentar(const std::function<void()>& step) {
    try {
        saveWithPatience(step);
        return true;
    } catch (const SilentRefusal&) {
        return false;
    } catch (const std::exception& error) {
        avisarGrabacion("Error en la grabación de la cuenta " + std::string(error.what()));
        return false;
    }
}

void PantallaCuenta::guardar() {
    if (!text::isNumericCode(text::trimEnd(Text1(Codigo).Text)))
        return avisarGrabacion("Debe indicar un codigo de cuenta");
    if (!comprobarGrabacion()) return;
    if (!intentar([this] { grabar(); })) return;
    anotarMostrado();
    terminarGrabacion();
}

void PantallaCuenta::grabar() {
    std::int64_t id = nIdActual;
    try {
        DobleTransaccion transaction(instanciaActual());
        if (id != 0)
            actualizarCuenta();
        else
            id = insertarCuenta();
        transaction.commitBd();
        // Whatever the second commit does, the row may by now be another than the one read.
        rsMostrada.reset();
        transaction.commitOrigin();
    } catch (...) {
        // The first of the two commits may have stored the new row: a save tried again must then update it, and must
        // insert it when it has gone with the second.
        if (nIdActual == 0 && id != 0 && estaGrabada(id)) nIdActual = id;
        throw;
    }
    nIdActual = id;
}

bool PantallaCuenta::estaGrabada(std::int64_t id) const {
    try {
        return !read("SELECT PCta_Id FROM PCta WHERE PCta_Id = " + std::to_string(id) +
                     " AND PCta_Cta = " + literal(Text1(Codigo).Text))
                    ->Eof();
    } catch (const ErrorBd&) {
        return false;
    }
}

void PantallaCuenta::actualizarCuenta() {
    const std::string id = std::to_string(nIdActual);
    const auto stored = read("SELECT * FROM PCta WHERE PCta_Id = " + id);
    if (stored->Eof()) {
        nIdActual = 0;
        rsMostrada.reset();
        cmdBorrar.Enabled = false;
        throw std::runtime_error("Otro programa ha eliminado la cuenta. Si la guarda otra vez, se crea de nuevo.");
    }
    if (rsMostrada && !stored->sameContents(*rsMostrada))
        throw std::runtime_error("Otro programa ha cambiado la cuenta. Vuelva a buscarla para ver cómo está ahora.");
    RowWrite account(instanciaActual().sesion(), "PCta");
    describirCuenta(account);
    escribirCambio(account, " WHERE PCta_Id = " + id);
}

void PantallaCuenta::escribirCambio(RowWrite& account, const std::string& where) {
    refusingSilently([&] { account.update(where); });
}

std::int64_t PantallaCuenta::insertarCuenta() const {
    RowWrite account(instanciaActual().sesion(), "PCta");
    describirCuenta(account);
    describirAlta(account);
    refusingSilently([&] { account.insert(); });
    const std::int64_t id = read("SELECT MAX(Pcta_Id) FROM PCta")->cell(0, 0).integer();
    comprobarAlta();
    return id;
}

void PantallaCuenta::borrar() {
    if (text::trim(Text1(Codigo).Text).empty()) return;
    if (!confirmInPlace("Desea eliminar la cuenta indicada", message::Question, sTituloVentana)) return;
    if (!confirmInPlace("ATENCION: Confirma que desea eliminar la cuenta seleccionada", message::Critical,
                        sTituloVentana))
        return;
    const std::string deleted = Text1(Codigo).Text;
    deleteRows(instanciaActual().sesion(), "PCta", " WHERE PCta_Id = " + literal(std::to_string(nIdActual)));
    LimpiarPantalla();
    tell("Borrada " + deleted);
    setFocus(Text1(Codigo));
}

}  // namespace FendaMaestros
