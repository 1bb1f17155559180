#include "chartreports/frmPlanVerificar.h"

#include <algorithm>
#include <stdexcept>

#include "chart/BuscarCuentas.h"
#include "chart/frmPlanCtas.h"
#include "session/ErrorBd.h"
#include "session/ParametrosEmpresa.h"
#include "toolkit/Format.h"
#include "ui/LongWork.h"
#include "ui/SessionAccess.h"
#include "ui/Version.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

constexpr int planCheck = 0;
constexpr int subaccountCheck = 1;
constexpr int byCode = 1;
constexpr int byName = 2;

constexpr char fieldSeparator = '\x01';

/// The hidden text of a row: the identity that a deletion goes by, "0" for an account that stays, the code and the
/// description.
std::string tagOf(const SubcuentaErronea& account) {
    return (account.conDiario ? "0" : std::to_string(account.id)) + fieldSeparator + account.codigo + fieldSeparator +
           account.descripcion;
}

std::string outcomeText(const Eliminacion& outcome) {
    std::string text = counted(outcome.eliminadas, "cuenta eliminada", "cuentas eliminadas");
    if (outcome.omitidas > 0)
        text +=
            ", " + counted(outcome.omitidas, "no: la ha cambiado otro programa", "no: las ha cambiado otro programa");
    if (!outcome.copia.empty()) text += ". Copia en " + outcome.copia;
    return text;
}

}  // namespace

frmPlanVerificar::frmPlanVerificar() {
    Caption = "Verificación de cuentas";
    barProgreso.Visible = false;
    ListView1.DblClick = [this] { abrirCuenta(); };
    cmdInicio.Click = [this] { iniciar(); };
    cmdSalir.Click = [this] { unload(); };
    explainKey({key::F(10)}, "Consultar el PGC por código");
    explainKey({key::F(11)}, "Consultar el PGC por orden alfabético");
    disponer();
}

void frmPlanVerificar::disponer() {
    add(Label1, "Label1");
    add(cboPlan, "cboPlan");
    add(cboPGC, "cboPGC");
    add(cmdInicio, "cmdInicio");
    add(ListView1, "ListView1");
    add(barProgreso, "barProgreso");
    add(cmdSalir, "cmdSalir");

    using namespace arrange;
    layOut(column({
        row({fields({field(Label1, {plain(cboPlan), plain(cboPGC)})}), buttons({&cmdInicio})}),
        filling(ListView1),
        row({plain(barProgreso), buttons({&cmdSalir})}),
    }));
}

void frmPlanVerificar::onLoad() {
    Screen::onLoad();
    sTituloVentana = "Verificación Plan de Cuentas";
    Caption = sTituloVentana + " (Versión " + componentVersion() + ")";
    for (const char* check : {"2008", "Subcuentas"}) cboPlan.AddItem(check);
    cboPlan.setListIndex(planCheck);
    cboPGC.AddItem("General");
    cboPGC.setListIndex(0);
}

void frmPlanVerificar::onKeyUp(int& code, int shift) {
    if (code == key::F(10)) return static_cast<void>(fnBuscarCuentas(byCode, true, true));
    if (code == key::F(11)) return static_cast<void>(fnBuscarCuentas(byName, true, true));
    Screen::onKeyUp(code, shift);
}

void frmPlanVerificar::iniciar() {
    std::string failure;
    try {
        const BusyGuard busy(*this);
        if (cboPlan.ListIndex() == planCheck) verificarPlan();
        if (cboPlan.ListIndex() == subaccountCheck) verificarSubcuentas();
    } catch (const std::runtime_error& error) {
        failure = error.what();
    }
    if (!failure.empty()) warn(failure, cmdInicio, message::Ok);
}

void frmPlanVerificar::prepararLista(std::vector<TableColumn> columns) {
    nIds.clear();
    ListView1.Rows.clear();
    ListView1.SelectedRow = -1;
    ListView1.Columns = std::move(columns);
}

// --- sub-accounts

void frmPlanVerificar::verificarSubcuentas() {
    prepararLista({{"Cuenta", 5000}, {"Diario", 1000, Alignment::Center}, {"Actuación", 6800}});
    const std::string digits = instanciaActual().sesion().Parametros().Item("Par_CtaNum").Value.text();
    std::shared_ptr<Recordset> rows;
    {
        const LongWork work(desktop(), barProgreso, lblEstado, "cuentas erróneas");
        rows = read(sqlSubcuentasErroneas(digits));
    }
    const auto found = subcuentasErroneas(*rows);
    for (const SubcuentaErronea& account : found) listarSubcuenta(account);
    contar("cuenta errónea", "cuentas erróneas", rows->Partial);
    if (!rows->Partial) cerrarVerificacion(found);
}

void frmPlanVerificar::contar(const char* one, const char* many, bool stopped) {
    const std::string count = counted(static_cast<int>(nIds.size()), one, many);
    tell(stopped ? count + " hasta aquí: la verificación no está completa" : count);
}

void frmPlanVerificar::listarSubcuenta(const SubcuentaErronea& account) {
    const char* action = "Ejecute Asientos. Utilidades. Cambio de cuentas para resolver el problema.";
    ListView1.Rows.push_back({.Texts = {account.codigo + " " + account.descripcion, account.conDiario ? "Si" : "No",
                                        account.conDiario ? action : ""},
                              .Tag = tagOf(account)});
    nIds.push_back(account.id);
}

void frmPlanVerificar::cerrarVerificacion(const std::vector<SubcuentaErronea>& found) {
    if (found.empty()) {
        markPendingMessage();
        ask("Finalizada verificación sin incidencias", message::Information, sTituloVentana);
        return;
    }
    const bool deletable =
        std::ranges::any_of(found, [](const SubcuentaErronea& account) { return !account.conDiario; });
    if (deletable &&
        ask("Desea eliminar las cuentas sin diario", message::YesNo + message::Question, sTituloVentana) == Answer::Yes)
        tell(outcomeText(eliminarSinDiario(found)));
    markPendingMessage();
    ask("Finalizada verificación con incidencias", message::Exclamation, sTituloVentana);
}

// --- the official plan

void frmPlanVerificar::verificarPlan() {
    prepararLista({{"Cuenta", 5800},
                   {"Plan Contable", 2000, Alignment::Center},
                   {"Balance Situación", 2000, Alignment::Center},
                   {"Cta Perdidas y Ganan.", 2000, Alignment::Center}});
    LongWork work(desktop(), barProgreso, lblEstado, "cuentas");
    const auto accounts = read(sqlSubcuentasActivas());
    work.expect(accounts->RecordCount());
    for (; !accounts->Eof(); accounts->MoveNext()) {
        const std::string code = accounts->Fields("pcta_cta").Value.text();
        const bool outside = !perteneceAlPlan(cboPlan.Text(), cboPGC.ListIndex() + 1, code);
        // A look-up that has been stopped says nothing about the account.
        if (work.stopped()) break;
        if (outside) {
            ListView1.Rows.push_back(
                {.Texts = {code + " " + accounts->Fields("PCta_Des").Value.text(), "No"}, .Tag = {}});
            nIds.push_back(accounts->Fields("PCta_Id").Value.integer());
        }
        if (!work.advance()) break;
    }
    contar("cuenta fuera del plan", "cuentas fuera del plan", work.stopped());
}

void frmPlanVerificar::abrirCuenta() {
    const int row = ListView1.SelectedRow;
    if (row >= 0 && row < static_cast<int>(nIds.size())) abrirSubcuentas(nIds[static_cast<std::size_t>(row)]);
}

}  // namespace FendaMaestros
