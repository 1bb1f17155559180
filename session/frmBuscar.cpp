#include "session/frmBuscar.h"

#include <algorithm>
#include <utility>

#include "toolkit/Format.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

constexpr int rowsOfAPage = 10;
constexpr Twips sliver = 100;

int searchColumnOf(const Recordset& rows, std::string_view name) {
    const int named = rows.columnIndex(name);
    return named >= 0 ? named : std::min(1, rows.columnCount() - 1);
}

}  // namespace

frmBuscar::frmBuscar(const AyudaCampos& opener, std::shared_ptr<Recordset> rows, std::string_view searchColumn,
                     std::array<ShownColumn, 2> shown)
    : Form(opener.desktop()),
      ayuda_(opener),
      allRows_(rows->rowCount()),
      shown_(std::move(shown)),
      found_(std::make_shared<FoundRows>(rows, searchColumnOf(*rows, searchColumn))) {}

void frmBuscar::onLoad() {
    add(lblBuscar, "lblBuscar");
    add(txtBuscar, "txtBuscar");
    add(dbgBuscar, "dbgBuscar");
    add(lblCuenta, "lblCuenta");
    add(cmdAceptar, "cmdAceptar");
    add(cmdSalir, "cmdSalir");
    layOut(arrange::column({
        arrange::fields({arrange::field(lblBuscar, txtBuscar)}),
        arrange::filling(dbgBuscar),
        arrange::plain(lblCuenta),
        arrange::buttons({&cmdAceptar, &cmdSalir}),
    }));

    txtBuscar.GotFocus = [this] { ayuda_.EntrarCampo(txtBuscar, "", 0); };
    txtBuscar.LostFocus = [this] { ayuda_.SalirCampo(txtBuscar, "", 0); };
    txtBuscar.Change = [this] { showRows(found_->search(txtBuscar.Text)); };
    dbgBuscar.DblClick = [this] { choose(); };
    cmdAceptar.Click = [this] { choose(); };
    cmdSalir.Click = [this] { unload(); };
    explainKey({key::Enter}, "Elegir la fila");
    explainKey({key::Escape}, "Salir sin elegir");
    for (const int code : {key::Up, key::Down, key::PageUp, key::PageDown})
        explainKey({code}, "Moverse por la lista, también mientras se escribe");
    TypingHints.emplace_back("Varias palabras: las filas que las tienen todas, en cualquier orden");
    showRows(found_);
}

/// Each narrowing binds rows of their own, so that a view sees that the list is another one.
void frmBuscar::showRows(std::shared_ptr<FoundRows> rows) {
    dbgBuscar.bind(rows);
    found_ = std::move(rows);
    dbgBuscar.Columns.clear();
    const int last = std::min(found_->columnCount() - 1, static_cast<int>(shown_.size()));
    for (int column = 1; column <= last; ++column) {
        const ShownColumn& shown = shown_[static_cast<std::size_t>(column - 1)];
        // A sliver without a caption is there for the code that reads the result.
        if (column > 1 && shown.caption.empty() && shown.width <= sliver) continue;
        GridColumn& added = dbgBuscar.Columns.emplace_back();
        added.Caption = shown.caption;
        added.SourceColumn = column;
        added.Width = shown.width;
    }
    dbgBuscar.Inactive = [this](int row) { return ayuda_.Inactiva && found_->isInactive(row, ayuda_.Inactiva); };
    lblCuenta.Caption = count();
    cmdAceptar.Enabled = found_->rowCount() > 0;
}

std::string frmBuscar::count() const {
    if (allRows_ == 0) return "No hay nada que buscar: la lista está vacía";
    if (found_->rowCount() == 0) return "Nada coincide con «" + text::trim(txtBuscar.Text) + "»";
    return format(found_->rowCount(), "#,##0") + " de " + format(allRows_, "#,##0");
}

void frmBuscar::onKeyDown(int& code, int /*shift*/) {
    if (code == key::Enter || code == key::Escape) pressed_ = code;
    switch (code) {
        case key::Up:
            moveBy(-1);
            break;
        case key::Down:
            moveBy(1);
            break;
        case key::PageUp:
            moveBy(-rowsOfAPage);
            break;
        case key::PageDown:
            moveBy(rowsOfAPage);
            break;
        default:
            return;
    }
    code = 0;
}

void frmBuscar::onKeyUp(int& code, int /*shift*/) {
    if (pressed_ == 0 || code != pressed_) return;
    pressed_ = 0;
    const bool leaves = code == key::Escape || activeControl() == &cmdSalir;
    code = 0;
    if (leaves)
        unload();
    else
        choose();
}

void frmBuscar::moveBy(int rows) {
    if (found_->rowCount() == 0) return;
    found_->moveToRow(std::clamp(found_->currentRow() + rows, 0, found_->rowCount() - 1));
}

void frmBuscar::choose() {
    const int row = found_->currentRow();
    if (row < 0) return;
    for (int column = 0; column < found_->columnCount(); ++column) {
        if (column > 0) result_ += separator;
        result_ += found_->cell(row, column).text();
    }
    unload();
}

}  // namespace FendaMaestros
