#include "chartreports/PantallaInforme.h"

#include "chart/BuscarCuentas.h"
#include "session/ErrorBd.h"
#include "session/ParametrosEmpresa.h"
#include "toolkit/Format.h"
#include "ui/LongWork.h"
#include "ui/SessionAccess.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

constexpr int byCode = 1;
constexpr int byName = 2;

/// A header may have been clicked before another kind of listing was chosen, which lacks that column.
bool isShown(const std::vector<ListingColumn>& columns, int column) {
    return column >= 0 && column < static_cast<int>(columns.size()) &&
           columns[static_cast<std::size_t>(column)].width > 0;
}

void ignoreEnter(int& ascii) {
    if (ascii == key::Enter) ascii = 0;
}

}  // namespace

PantallaInforme::PantallaInforme(std::initializer_list<int> fields, std::initializer_list<int> labels)
    : Label1("Label1", labels), Text1("Text1", fields) {
    Check2.Caption = "En cualquier parte del nombre";
    for (const auto& [index, field] : Text1.elements()) {
        editField(*field);
        field->KeyPress = ignoreEnter;
    }
    for (const int code : {Desde, Hasta}) {
        Text1(code).Tag = "Cuentas";
        Text1(code).TextAlignment = Alignment::Center;
        Text1(code).Searches = accountSearches();
        Text1(code).KeyPress = [this, &field = Text1(code)](int& ascii) {
            Ayuda.FiltrarTecla(field, ascii, true, 0);
            if (ascii == key::Enter || ascii == '-') ascii = 0;
        };
        Text1(code + 1).Locked = true;
        Text1(code + 1).TabStop = false;
    }
    cmdInforme.Enabled = cmdExcel.Enabled = false;
    barProgreso.Visible = false;

    dbg.Sort = [this](int column, bool ascending) {
        auto sorted = static_cast<std::int16_t>(column);
        CargarGrid(sorted, ascending);
    };
    cmdIniciar.Click = [this] {
        std::int16_t byDefault = -1;
        CargarGrid(byDefault, true);
    };
    cmdInforme.Click = [this] { imprimir(); };
    cmdExcel.Click = [this] { exportar(); };
    cmdSalir.Click = [this] { unload(); };
    explainKey({key::F(10)}, "Consultar las cuentas en la aplicación por código");
    explainKey({key::F(11)}, "Consultar las cuentas en la aplicación por nombre");
}

void PantallaInforme::onLoad() {
    Screen::onLoad();
    const auto digits = static_cast<int>(digitosSubcuenta(instanciaActual().sesion().Parametros()));
    for (const int code : {Desde, Hasta}) Text1(code).MaxLength = digits;
    CargarCombos();
}

/// The caret waits in the first code; the list of kinds, before it in tab order, is rarely changed.
void PantallaInforme::onActivate() {
    if (!bActivada_) setFocus(Text1(Desde));
    bActivada_ = true;
}

void PantallaInforme::onKeyUp(int& code, int shift) {
    switch (code) {
        case key::F(1):
            return buscarConTecla(byCode);
        case key::F(2):
            return buscarConTecla(byName);
        case key::F(10):
            return consultarEnAnfitrion(byCode);
        case key::F(11):
            return consultarEnAnfitrion(byName);
        default:
            return Screen::onKeyUp(code, shift);
    }
}

void PantallaInforme::buscarConTecla(int mode) {
    markPendingMessage();
    for (const int field : {Desde, Hasta})
        if (activeControl() == &Text1(field)) CargarCuenta(mode, field, {}, 0);
    unmarkUnlessAwaited();
}

/// The host's own search; what is picked there is only looked at.
void PantallaInforme::consultarEnAnfitrion(std::int16_t mode) {
    const auto host = instanciaActual().components().create<HostApplication>();
    host->MyBd = instanciaActual().MyBd;
    host->fnBuscarCuentas(mode, true);
}

PantallaInforme::Hallazgo PantallaInforme::CargarCuenta(int mode, int field, const std::string& code, std::int64_t id) {
    if (code.empty() && id == 0) id = fnBuscarCuentas(static_cast<std::int16_t>(mode), false, true);
    if (code.empty() && id == 0) return Hallazgo::NadaBuscado;
    const auto found = read(sqlSubcuenta(id, code));
    if (found->Eof()) {
        Text1(field + 1).Text.clear();
        return Hallazgo::NoEncontrada;
    }
    Text1(field).Text = found->Fields("pcta_cta").Value.text();
    Text1(field + 1).Text = found->Fields("PCta_Des").Value.text();
    return Hallazgo::Encontrada;
}

void PantallaInforme::CargarGrid(std::int16_t& nColumna, bool bAsc) {
    try {
        listar(nColumna, bAsc);
    } catch (const ErrorBd& error) {
        warn(error.what(), cmdIniciar, message::Ok);
    }
}

void PantallaInforme::listar(std::int16_t& nColumna, bool bAsc) {
    const BusyGuard busy(*this);
    const Consulta wanted = consulta(nColumna, bAsc);
    LongWork work(desktop(), barProgreso, lblEstado, "cuentas leídas");
    leerTotal();
    rsListado = read(wanted.sql);
    sSQLListado = wanted.sql;
    dbg.show(rsListado, wanted.columnas);
    mostrarTotal();
    cmdExcel.Enabled = cmdInforme.Enabled = rsListado->RecordCount() > 0;
    if (!isShown(wanted.columnas, nColumna)) nColumna = columnaPorDefecto();
    dbg.markOrder(nColumna, wanted.orden.titulo, bAsc);
    const std::string count = counted(rsListado->RecordCount(), "cuenta", "cuentas");
    tell(rsListado->Partial ? count + " hasta aquí: el listado no está completo" : count);
}

void PantallaInforme::exportar() {
    const BusyGuard busy(*this);
    desktop().processPending();
    exportRows(dbg, {});
    rsListado = dbg.rows();
}

}  // namespace FendaMaestros
