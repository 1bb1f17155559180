#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <vector>

#include "chartreports/FiltroCuentas.h"
#include "session/Recordset.h"
#include "ui/ListPair.h"
#include "ui/ListingGrid.h"
#include "ui/Screen.h"

namespace FendaMaestros {

/// The design that the listings of accounts share: the kind of listing and its filters above, the accounts in a grid
/// sorted by its headers below, printed and taken to a spreadsheet. Nothing is listed until cmdIniciar asks for it.
class PantallaInforme : public Screen {
protected:
    /// The elements of Text1 that every one of them has; each end of the range has the name of its account behind it.
    static constexpr int NombreBuscado = 0, Desde = 2, NombreDesde = 3, Hasta = 10, NombreHasta = 11;
    enum class Hallazgo { NoEncontrada = -1, NadaBuscado = 0, Encontrada = 1 };

    /// What the screen asks for now.
    struct Consulta {
        std::string sql;
        OrdenCuentas orden;
        std::vector<ListingColumn> columnas;
    };

    /// `fields` and `labels` are the indexes of Text1 and Label1.
    PantallaInforme(std::initializer_list<int> fields, std::initializer_list<int> labels);

    // --- what each screen adds

    virtual void CargarCombos() = 0;
    /// The column that stands for -1: the one that is labelled when cmdIniciar lists.
    virtual std::int16_t columnaPorDefecto() const { return 1; }
    /// The listing that the fields ask for, in the order of a column; -1 the default order.
    virtual Consulta consulta(std::int16_t nColumna, bool bAsc) = 0;
    /// Reads what is shown beside the listing, before it and after it has been shown.
    virtual void leerTotal() {}
    virtual void mostrarTotal() {}
    virtual void imprimir() = 0;

    // --- what they share

    void onLoad() override;
    void onActivate() override;
    void onKeyUp(int& code, int shift) override;
    /// Reads and shows the listing in the order of a column; -1, which becomes the default order's column, for that.
    /// When it cannot be read, the person is told and what was shown stays.
    void CargarGrid(std::int16_t& nColumna, bool bAsc);
    /// Looks up a sub-account by code or identity, or lets a person search it (`mode` 1 by code, 2 by name), and shows
    /// it in a field and the one behind it.
    Hallazgo CargarCuenta(int mode, int field, const std::string& code, std::int64_t id);

    ControlArray<Label> Label1;
    ControlArray<TextBox> Text1;
    ComboBox cboTipo;
    CheckBox Check2;
    ListingGrid dbg;
    CommandButton cmdIniciar{"&Iniciar búsqueda"};
    CommandButton cmdInforme{"&Emitir informe"};
    CommandButton cmdExcel{"Exporta a E&xcel"};
    CommandButton cmdSalir{"&Salir"};
    ProgressBar barProgreso;

    /// The rows listed; null until something has been.
    std::shared_ptr<Recordset> rsListado;
    /// The read they come from.
    std::string sSQLListado;

private:
    void buscarConTecla(int mode);
    static void consultarEnAnfitrion(std::int16_t mode);
    void listar(std::int16_t& nColumna, bool bAsc);
    void exportar();

    bool bActivada_ = false;
};

}  // namespace FendaMaestros
