#pragma once

#include <array>
#include <memory>
#include <string>

#include "session/AyudaCampos.h"
#include "session/FoundRows.h"
#include "session/Recordset.h"
#include "toolkit/Form.h"

namespace FendaMaestros {

/// The search dialog: what is typed narrows a list of rows, and one of them is chosen. The arrows and page keys move in
/// the list wherever the focus is; Enter or a double click chooses, Esc leaves.
class frmBuscar final : public Form {
public:
    /// Stands between the values of a result.
    static constexpr char separator = '\x01';

    struct ShownColumn {
        std::string caption;
        Twips width;
    };

    /// On the desktop and with the colours of the helper that opens it. Shows the second and third columns of `rows`.
    /// `searchColumn` names the one that is narrowed; when the rows have
    /// none of that name, it is the first one shown.
    frmBuscar(const AyudaCampos& opener, std::shared_ptr<Recordset> rows, std::string_view searchColumn,
              std::array<ShownColumn, 2> shown);

    /// The values of the chosen row joined by the separator; empty when none was chosen.
    const std::string& result() const { return result_; }

protected:
    void onLoad() override;
    void onKeyDown(int& code, int shift) override;
    void onKeyUp(int& code, int shift) override;

private:
    void showRows(std::shared_ptr<FoundRows> rows);
    /// How many there are, or that there are none.
    std::string count() const;
    void moveBy(int rows);
    void choose();

    AyudaCampos ayuda_;
    int allRows_;
    std::array<ShownColumn, 2> shown_;
    std::shared_ptr<FoundRows> found_;
    std::string result_;
    /// Enter or Esc, from its press to its release: a release whose press went to another screen does nothing.
    int pressed_ = 0;

    Label lblBuscar{"Buscar"};
    TextBox txtBuscar;
    DataGrid dbgBuscar;
    Label lblCuenta;
    CommandButton cmdAceptar{"&Aceptar"};
    CommandButton cmdSalir{"Salir"};
};

}  // namespace FendaMaestros
