#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "session/Recordset.h"
#include "ui/ListPair.h"
#include "ui/NavigationButtons.h"
#include "ui/Screen.h"

namespace FendaMaestros {

class RowWrite;

/// The company's sub-accounts, table `PCta`: found by code or name, walked through, created, changed and deleted, with
/// their links to other accounts and to a tax identity.
class frmPlanCtas final : public Screen {
public:
    frmPlanCtas();

    /// `PCta_Id` of the account to show on opening, set before the screen loads; 0 for none.
    std::int64_t nIdInicial = 0;

    /// Puts the screen, before it is shown, into creation mode: a save or a cancel closes it. Arguments as
    /// msNuevaCuenta.
    void prepararCreacion(std::string& sCta, std::int32_t nNif, bool bCalcula);
    /// New-account mode, with the code `sCta` or, with `bCalcula`, the next free one that begins with it, which is
    /// written back into `sCta`. `nNif`: Nif_Id of the account's tax identity, 0 for none.
    void msNuevaCuenta(std::string& sCta, std::int32_t nNif, bool bCalcula);

private:
    /// The elements of Text1; each code, and the document, has its name in the next.
    enum Campo { Codigo, Nombre, Asociada, NombreAsociada, Documento, NombreNif, Irpf, NombreIrpf };
    enum class Hallazgo { NoEncontrada = -1, NadaBuscado = 0, Encontrada = 1 };

    void componer();
    void onLoad() override;
    void onActivate() override;
    void onKeyUp(int& code, int shift) override;
    void LimpiarPantalla();
    void cargarListas();
    /// Runs a search whose closing leaves the focus where it is, although the screen comes on top again.
    void enBusqueda(const std::function<void()>& search);
    void buscarConTecla(int mode);
    void mostrarTeclas();
    void navegar(Step step);
    void cancelarNueva();
    void verFicha();
    static std::size_t digitos();

    // --- leaving fields (PlanCtasCampos.cpp)
    void prepararCampos();
    void prepararCodigos();
    /// A code being typed with a comma: shows what it will become and where it hangs from.
    void mostrarEstado(int field);
    std::string textoEstado(int field) const;
    void quitarEstado();
    void dejarCodigo();
    void dejarCuentaAsociada(int field);
    void dejarNif();

    // --- finding and showing (PlanCtasCargar.cpp)
    /// Finds an account by code or identity, or lets a person search it (`mode` 1 by code, 2 by name) when both are
    /// missing, and shows it in a field and the one behind it; in field 0, with all that belongs to it.
    Hallazgo CargarCuenta(int mode, int field, const std::string& code, std::int64_t id);
    void mostrarCuenta();
    void mostrarAsociada();
    void mostrarIrpf();
    void mostrarNif();
    /// The identity of a document as typed, its check letter put right: 0 when a search was left, -1 when there is
    /// none.
    std::int64_t BuscarNif(std::string document);
    /// As BuscarNif, the document as it is; an empty one opens the search.
    std::int64_t msBuscaNifGeneral(const std::string& document);

    // --- writing (PlanCtasGuardar.cpp)
    void guardar();
    void avisarGrabacion(const std::string& text);
    /// Runs a step of the save; false when it failed, after having told the person.
    template <class Step>
    bool intentar(Step&& step);
    bool existeCodigo() const;
    void rechazarRepetida();
    bool faltaNif() const;
    /// Writes in the two transactions. When it throws, nIdActual is that of a row which is there all the same.
    void grabar();
    /// False also when the database does not answer.
    bool estaGrabada(std::int64_t id) const;
    void describirCuenta(RowWrite& write) const;
    /// Throws std::runtime_error when another program has changed the account, or has deleted it: then it is a new one.
    void actualizarCuenta();
    /// Gives the identity of the new row.
    std::int64_t insertarCuenta() const;
    void terminarGrabacion();
    void cerrarConCuenta();
    void borrar();
    void asignarCentros();

    ControlArray<Label> Label1{"Label1", {0, 1, 2, 3, 4, 5, 6, 7}};
    ControlArray<TextBox> Text1{"Text1", {0, 1, 2, 3, 4, 5, 6, 7}};
    ListPair cboCentro{"cboCentro"};
    ListPair cboDepar{"cboDepar"};
    ListPair cboMasas{"cboMasas"};
    Frame Frame2;
    OptionButton Option1;
    OptionButton Option2;
    NavigationButtons navegacion{[this](Step step) { navegar(step); }};
    CommandButton cmdGuardar{"&Guardar "};
    CommandButton cmdNueva{"&Cancelar Nueva Cuenta"};
    CommandButton cmdBorrar{"&Borrar"};
    CommandButton cmdVerFicha{"&Ver ficha"};
    CommandButton Command1{"asignar centros al diario"};
    CommandButton cmdSalir{"Salir"};
    Label lblAyuda{"Ayuda para buscar cuentas F1 Codigo - F2 Nombre - / Consulta PGC F10 Codigo F11 Alfabetico"};
    Label lblTeclas{"F1 en los demás campos: lista de teclas · Intro campo siguiente · Esc salir"};
    Label lblEstado;

    bool bModoCrear = false;
    bool bActivada = false;
    bool bEnFichaNif = false;
    bool bEnBusqueda = false;
    /// The database has not answered for the status line of the field that is being typed into.
    bool bSinEstado = false;
    std::int64_t nIdActual = 0;
    std::int64_t nIdCtaAso = 0;
    std::int64_t nIdNif = 0;
    std::int64_t nIdOrigen = 0;
    std::int64_t nOrigen = 0;
    std::int16_t nPlan = 0;
    /// The row found last, by any of the code fields.
    std::shared_ptr<Recordset> rsCuenta;
    /// The row of the account shown, as it was read; null for one that this screen has inserted.
    std::shared_ptr<Recordset> rsMostrada;
    /// The document when its field last received the focus.
    std::string sNifAnterior;
};

}  // namespace FendaMaestros
