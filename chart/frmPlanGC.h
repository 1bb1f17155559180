#pragma once

#include "chart/PantallaCuenta.h"

namespace FendaMaestros {

/// The accounts of the official plan, table `PCta`: found by code or name, walked through, created, renamed, given a
/// balance mass and deleted. It says in which balance the account stands.
class frmPlanGC final : public PantallaCuenta {
public:
    /// `abrirInforme` opens the listing of the official plan, which stands above this screen's floor.
    explicit frmPlanGC(std::function<void()> abrirInforme);

private:
    static constexpr int Balance = 2;

    void componer();
    void onLoad() override;
    std::string condicion() const override;
    std::string recorrido() const override;
    Hallazgo CargarCuenta(int mode, int field, const std::string& code, std::int64_t id) override;
    void dejarCodigo() override;
    void buscarCodigo();
    void msNuevaCuenta(const std::string& code);
    void mostrarMasa(const std::string& code);
    void admitirMasa(const std::string& code);
    /// In which balance of the plan an account stands: the line of the nearest code, its own or one it begins with,
    /// that has one.
    std::string balanceDe(std::string code) const;
    void describirCuenta(RowWrite& write) const override;
    void describirAlta(RowWrite& write) const override;
    void terminarGrabacion() override;

    ComboBox cboPlan;
    ComboBox cboPGC;
    CommandButton cmdInforme{"&Informe"};
};

}  // namespace FendaMaestros
