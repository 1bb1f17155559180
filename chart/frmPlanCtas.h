#pragma once

#include <cstdint>
#include <string>

#include "chart/AvisoCodigo.h"
#include "chart/PantallaCuenta.h"

namespace FendaMaestros {

/// Shows the sub-accounts on the one with this PCta_Id, if it is not 0; returns when the person has closed them.
void abrirSubcuentas(std::int64_t nIdCuenta);

/// The company's sub-accounts, table `PCta`: found by code or name, walked through, created, changed and deleted, with
/// their links to other accounts and to a tax identity.
class frmPlanCtas final : public PantallaCuenta {
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
    /// The further elements of Text1; each code, and the document, has its name in the next.
    static constexpr int Asociada = 2, NombreAsociada = 3, Documento = 4, NombreNif = 5, Irpf = 6, NombreIrpf = 7;

    void componer();
    void onLoad() override;
    void onActivate() override;
    std::string condicion() const override { return "PCta_Subcuenta = 1 "; }
    std::string recorrido() const override { return " WHERE PCta_Subcuenta=1"; }
    void LimpiarPantalla() override;
    void cargarListas() override;
    void buscarEnCampo(int mode, int field) override;
    void cancelarNueva() override;
    void descartarNueva() override { LimpiarPantalla(); }
    void verFicha();
    static std::size_t digitos();
    std::vector<std::string> contenido() const override;
    std::string situacion() const override;
    /// What a save would store in place of the entries of the account that are in no list.
    std::string entradasSinLista() const;
    /// The name typed for a new account, for the identity that is created for it; "" for an account that is stored.
    std::string nombreParaFicha() const;

    // --- leaving fields (PlanCtasCampos.cpp)
    void prepararCampos();
    void prepararCodigos();
    /// A code being typed with a comma: shows what it will become and where it hangs from.
    void mostrarEstado(int field);
    /// What leaving the field will make of its code.
    std::string codigoCompleto(int field) const;
    /// A code is typed no longer: the status line tells the situation of the account.
    void quitarEstado();
    void dejarCodigo() override;
    void buscarCodigo();
    void dejarCuentaAsociada(int field);
    void dejarNif();

    // --- finding and showing (PlanCtasCargar.cpp)
    Hallazgo CargarCuenta(int mode, int field, const std::string& code, std::int64_t id) override;
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
    bool comprobarGrabacion() override;
    bool existeCodigo() const;
    /// An associated account whose identity another look-up has taken is looked for again; false when it is not there.
    bool completarAsociada();
    void rechazarRepetida();
    bool faltaNif() const;
    void describirCuenta(RowWrite& write) const override;
    void escribirCambio(RowWrite& account, const std::string& where) override;
    void comprobarAlta() const override;
    void terminarGrabacion() override;
    void cerrarConCuenta();
    void asignarCentros();

    ListPair cboCentro{"cboCentro"};
    ListPair cboDepar{"cboDepar"};
    Frame Frame2;
    OptionButton Option1;
    OptionButton Option2;
    CommandButton cmdVerFicha{"&Ver ficha"};
    Frame Frame3;
    CommandButton Command1{"asignar centros al diario"};
    Label lblTeclas{"F1 en los demás campos: lista de teclas · Intro campo siguiente · Esc salir"};

    bool bModoCrear = false;
    bool bEnFichaNif = false;
    AvisoCodigo aviso;
    std::int64_t nIdCtaAso = 0;
    std::int64_t nIdNif = 0;
    std::int64_t nIdOrigen = 0;
    std::int64_t nOrigen = 0;
    std::int16_t nPlan = 0;
    /// The document when its field last received the focus.
    std::string sNifAnterior;
};

}  // namespace FendaMaestros
