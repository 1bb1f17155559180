#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "session/Recordset.h"
#include "ui/ListPair.h"
#include "ui/NavigationButtons.h"
#include "ui/RowWrite.h"
#include "ui/Screen.h"

namespace FendaMaestros {

/// What the screens of accounts share, table `PCta`: an account is looked up by its code, searched, walked to, created,
/// saved in two transactions and deleted. Which accounts those are, and what else they have, each screen says.
class PantallaCuenta : public Screen {
protected:
    /// The elements of Text1 that every one of them has.
    static constexpr int Codigo = 0, Nombre = 1;
    /// Characters of the name of an account.
    static constexpr int nameLength = 140;
    enum class Hallazgo { NoEncontrada = -1, NadaBuscado = 0, Encontrada = 1 };

    /// `fields` are the indexes of Text1 and of Label1. `bPGC`: its searches look among the accounts of the official
    /// plan, not among the sub-accounts.
    PantallaCuenta(std::initializer_list<int> fields, std::initializer_list<int> labels, bool bPGC);

    // --- what each screen adds

    /// The accounts that it looks up, as the beginning of a condition behind WHERE.
    virtual std::string condicion() const = 0;
    /// Those that navigation walks through, as a condition with its WHERE.
    virtual std::string recorrido() const = 0;
    /// Finds an account, see localizar(), and shows it in a field and the one behind it; in field Codigo, with all that
    /// belongs to it.
    virtual Hallazgo CargarCuenta(int mode, int field, const std::string& code, std::int64_t id) = 0;
    /// The code field has been left.
    virtual void dejarCodigo() = 0;
    /// Fills the lists that only this screen has.
    virtual void cargarListas() {}
    /// Empties the screen; none is shown any more.
    virtual void LimpiarPantalla();
    /// Searches for what a field with a Tag holds; `mode` 1 by code, 2 by name.
    virtual void buscarEnCampo(int mode, int field) { CargarCuenta(mode, field, {}, 0); }
    virtual void cancelarNueva();
    /// What is typed of a new account is not to be saved.
    virtual void descartarNueva() { anotarMostrado(); }

    /// Further checks of a save, after that of the code; false when one has refused it, and has said why.
    virtual bool comprobarGrabacion() { return true; }
    /// The columns that an update and an insert write.
    virtual void describirCuenta(RowWrite& write) const = 0;
    /// Further columns of a new row.
    virtual void describirAlta(RowWrite& /*write*/) const {}
    /// Writes the changes of the row that `where` names, and what changes with it.
    virtual void escribirCambio(RowWrite& account, const std::string& where);
    /// What of the screen a save stores and a person may have changed, apart from the code.
    virtual std::vector<std::string> contenido() const;
    /// What there is to know about the account shown before it is saved; "" for nothing.
    virtual std::string situacion() const;
    /// Inside the transaction, behind the insert. Throws when the row must not stay.
    virtual void comprobarAlta() const {}
    virtual void terminarGrabacion() = 0;

    // --- what they share

    void onLoad() override;
    void onActivate() override { bActivada = true; }
    void onKeyUp(int& code, int shift) override;
    std::string unsaved() const override;

    /// From now on what the screen shows is not unsaved.
    void anotarMostrado();
    /// Changes what the screen shows by itself: that leaves nothing unsaved.
    void sinContarComoCambio(const std::function<void()>& step);
    /// Carries out what may show another account; the status line then tells what that has left unsaved, and the
    /// situation of the one shown.
    void cambiandoCuenta(const std::function<void()>& step);
    /// A field for the code of an account: what can be typed into it, and F1 and F2 search.
    void prepararCodigo(int field);
    /// Reads into `row` the account of a code or of an identity, or, when both are missing, the one that a person picks
    /// (`mode` 1 by code, 2 by name); nothing is read when none is picked. Found, it can be saved; otherwise none is
    /// the current one any more.
    Hallazgo localizar(int mode, const std::string& code, std::int64_t id, std::shared_ptr<Recordset>& row);
    /// The row of the account of an identity or, when that is 0, of a code. Never null.
    std::shared_ptr<Recordset> leerCuenta(const std::string& code, std::int64_t id) const;
    /// Whether journal lines stand under the code, or under those that begin with it.
    static bool conDiario(const std::string& condition);
    /// New-account mode: empty but for what the screen puts there next.
    void prepararAlta();
    /// The code stays in its field; a person goes on with the name, if `bEnNombre` and the screen is shown.
    void mostrarCodigoNuevo(const std::string& code, bool bEnNombre);
    /// Shows a message of the save; the Enter that dismisses it moves no focus.
    void avisarGrabacion(const std::string& text);
    /// Carries out a step of the save with patience; false when it failed, after having told the person.
    bool intentar(const std::function<void()>& step);

    ControlArray<Label> Label1;
    ControlArray<TextBox> Text1;
    ListPair cboMasas{"cboMasas"};
    NavigationButtons navegacion{[this](Step step) { navegar(step); }};
    CommandButton cmdGuardar{"&Guardar "};
    CommandButton cmdNueva{"&Cancelar Nueva Cuenta"};
    CommandButton cmdBorrar{"&Borrar"};
    CommandButton cmdSalir{"Salir"};
    Label lblAyuda{"Ayuda para buscar cuentas F1 Codigo - F2 Nombre - / Consulta PGC F10 Codigo F11 Alfabetico"};

    bool bActivada = false;
    bool bEnBusqueda = false;
    std::int64_t nIdActual = 0;
    /// The row of the account looked for last, where navigation goes on from.
    std::shared_ptr<Recordset> rsCuenta;
    /// The row of the account shown, as it was read; null for one that this screen has inserted.
    std::shared_ptr<Recordset> rsMostrada;

private:
    /// Runs a search whose closing leaves the focus where it is, although the screen comes on top again.
    void enBusqueda(const std::function<void()>& search);
    void buscarConTecla(int mode);
    void navegar(Step step);

    void guardar();
    /// Writes in the two transactions. When it throws, nIdActual is that of a row which is there all the same.
    void grabar();
    /// False also when the database does not answer.
    bool estaGrabada(std::int64_t id) const;
    /// Throws std::runtime_error when another program has changed the account, or has deleted it: then it is a new one.
    void actualizarCuenta();
    /// Gives the identity of the new row.
    std::int64_t insertarCuenta() const;
    void borrar();

    bool bPGC_;
    /// Code and contents of what was shown last, or saved.
    std::string sCodigoMostrado_;
    std::vector<std::string> contenidoMostrado_;
};

}  // namespace FendaMaestros
