#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>

#include "chart/AvisoCodigo.h"
#include "chartreports/PantallaInforme.h"

namespace FendaMaestros {

/// The company's chart of accounts as a listing: by range, place, state, name and balance, with the balance of each
/// account and their total.
class frmPlandeCuentas final : public PantallaInforme {
public:
    frmPlandeCuentas();

private:
    static constexpr int DesdeSaldo = 4, HastaSaldo = 5;

    void CargarCombos() override;
    Consulta consulta(std::int16_t nColumna, bool bAsc) override;
    void leerTotal() override;
    void mostrarTotal() override;
    void imprimir() override;

    void disponer();
    /// Shows the inactive accounts of the listing quietly; its own read does not say which they are.
    void apagarInactivas();
    TipoInforme tipo() const { return static_cast<TipoInforme>(cboTipo.ListIndex()); }
    FiltroCuentas filtro();
    EstadoCuenta estado() const;
    void elegirTipo();
    /// A code being typed with a comma: the status line shows what it will become.
    void anunciarCodigo(int field);
    void dejarCodigo(int field);
    void dejarSaldo(int field);
    void abrirCuenta();

    ListPair cboDepar{"cboDepar"};
    ListPair cboCentro{"cboCentro"};
    Frame Frame1;
    ControlArray<OptionButton> Option1{"Option1", {0, 1, 2}};
    CheckBox Check1;
    ControlArray<Label> lblAcu{"lblAcu", {2}};

    /// Of what is listed, which may no longer be what the fields say.
    TipoInforme tipoListado_ = TipoInforme::Subcuentas;
    bool conSaldoListado_ = false;
    std::string rangoListado_;

    AvisoCodigo aviso_;
    std::string total_;
    /// `PCta_Id` of the inactive accounts, for a listing of all.
    std::unordered_set<std::int64_t> inactivas_;
    /// The bounds that the person has been told are reversed, and has left so.
    std::string saldosAvisados_;
};

}  // namespace FendaMaestros
