#include "app/window/frmRenumerar.h"

#include <algorithm>

#include "chart/BuscarCuentas.h"
#include "chart/CodigosCuenta.h"
#include "renumbering/Report.h"
#include "session/Literal.h"
#include "toolkit/Text.h"
#include "ui/SessionAccess.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

constexpr std::int16_t byCode = 1;
constexpr std::int16_t byName = 2;
constexpr int longestCode = 20;
/// How long work goes on before it shows how far it is, and how often it does.
constexpr std::chrono::milliseconds patience(500), period(100);
/// A person reads no more of them at once; the list has what belongs to single codes.
constexpr std::size_t sentencesShown = 6;

constexpr const char* explained[] = {
    "Da a una subcuenta un código libre. Con ella cambian sus apuntes y las cuentas que están enlazadas con ella. Con "
    "«43,» se propone el siguiente código libre del 43.",
    "Cambia la longitud de todas las subcuentas, con sus apuntes. Los ceros entran o salen detrás de la cuenta del "
    "plan: "
    "43000001 pasa a ser 4300000001. Haga antes una copia de seguridad.",
    "Los apuntes, los enlaces y la identidad de la primera pasan a la que queda, y la primera se elimina."};

std::shared_ptr<Recordset> subaccount(const std::string& condition) {
    return read("SELECT PCta_Cta,PCta_Des FROM PCta WHERE PCta_Subcuenta = 1 AND " + condition);
}

enum Columna { Codigo, Nuevo, Nombre, Apuntes, Impedimento };

void showCodes(DataGrid& grid, const std::vector<CodeChange>& codes) {
    auto rows = std::make_shared<Recordset>(
        std::vector<std::string>{"Código", "Código nuevo", "Nombre", "Apuntes", "Lo impide"});
    for (const CodeChange& change : codes) {
        rows->appendText(change.from);
        rows->appendText(change.to);
        rows->appendText(change.name);
        rows->appendInteger(change.lines);
        rows->appendText(change.why);
    }
    grid.bind(std::move(rows));
    const bool hindered = std::ranges::any_of(codes, [](const CodeChange& change) { return !change.why.empty(); });
    const Twips widths[] = {1500, 1500, hindered ? 2200 : 4200, 1000, 3500};
    for (std::size_t column = 0; column < grid.Columns.size(); ++column) grid.Columns[column].Width = widths[column];
    grid.Columns[Apuntes].TextAlignment = Alignment::Right;
    grid.Columns[Apuntes].NumberFormat = "#,##0";
    grid.Columns[Apuntes].Visible = !hindered;
    grid.Columns[Impedimento].Visible = hindered;
}

std::string inLines(const RenumberingPlan& plan) {
    std::vector<std::string> sentences;
    for (const std::string& obstacle : plan.obstacles) sentences.push_back("No se puede. " + obstacle);
    if (const std::string counts = countsText(plan); !counts.empty()) sentences.push_back(counts);
    sentences.insert(sentences.end(), plan.notes.begin(), plan.notes.end());
    sentences.resize(std::min(sentences.size(), sentencesShown));
    std::string lines;
    for (const std::string& sentence : sentences) lines += (lines.empty() ? "" : "\n") + sentence;
    return lines;
}

/// Hides the bar when the work ends.
class BarInUse {
public:
    explicit BarInUse(ProgressBar& bar) : bar_(bar) {}
    BarInUse(const BarInUse&) = delete;
    BarInUse& operator=(const BarInUse&) = delete;
    ~BarInUse() { bar_.Visible = false; }

private:
    ProgressBar& bar_;
};

}  // namespace

frmRenumerar::frmRenumerar() {
    Caption = sTituloVentana = "Renumerar cuentas";
    for (const char* what :
         {"El código de una subcuenta", "Los dígitos de todas las subcuentas", "Dos subcuentas, que pasan a ser una"})
        cboQue.AddItem(what);
    for (const char* whose : {"La única, si solo hay una", "La de la que desaparece", "La de la que queda"})
        cboIdentidad.AddItem(whose);
    cboIdentidad.setListIndex(0);
    chkFuera.Caption = "Puede no colgar del &plan oficial";
    barProgreso.Visible = false;
    colocar();

    cboQue.Click = [this] { elegirClase(); };
    cboIdentidad.Click = chkFuera.Click = [this] { olvidar(); };
    for (const int field : {Subcuenta, CodigoNuevo, Queda, Longitud}) {
        TextBox& box = Text1(field);
        const bool code = field != Longitud;
        editField(box, [this, field, code] {
            if (code) dejarCodigo(field);
        });
        box.MaxLength = longestCode;
        box.Change = [this] { olvidar(); };
        box.KeyPress = [this, &box, code](int& ascii) {
            Ayuda.FiltrarTecla(box, ascii, code, 0);
            if (ascii == key::Enter || ascii == '-') ascii = 0;
        };
        if (!code) continue;
        Text1(field + 1).Locked = true;
        Text1(field + 1).TabStop = false;
    }
    for (const int field : {Subcuenta, Queda}) Text1(field).Searches = accountSearches();
    cmdVer.Click = [this] { ver(); };
    cmdAplicar.Click = [this] { aplicar(); };
    cmdInforme.Click = [this] { guardarInforme(); };
    cmdSalir.Click = [this] { unload(); };
    cboQue.setListIndex(Cuenta);
}

void frmRenumerar::colocar() {
    const std::pair<int, const char*> fields[] = {
        {Subcuenta, "Subcuenta"}, {CodigoNuevo, "Código nuevo"}, {Queda, "Queda la subcuenta"}, {Longitud, "Dígitos"}};
    add(lblQue, "lblQue");
    add(cboQue, "cboQue");
    for (const auto& [field, caption] : fields) {
        Label1(field).Caption = caption;
        add(Label1(field), "Label1(" + std::to_string(field) + ")");
        add(Text1(field), "Text1(" + std::to_string(field) + ")");
        if (field != Longitud) add(Text1(field + 1), "Text1(" + std::to_string(field + 1) + ")");
    }
    add(lblIdentidad, "lblIdentidad");
    add(cboIdentidad, "cboIdentidad");
    add(chkFuera, "chkFuera");
    add(cmdVer, "cmdVer");
    add(cmdAplicar, "cmdAplicar");
    add(cmdInforme, "cmdInforme");
    add(cmdSalir, "cmdSalir");
    add(lblResumen, "lblResumen");
    add(dbg, "dbg");
    add(barProgreso, "barProgreso");
    const auto code = [this](int field) {
        return arrange::field(Label1(field), {arrange::plain(Text1(field)), arrange::plain(Text1(field + 1))});
    };
    layOut(arrange::column({arrange::fields({arrange::field(lblQue, cboQue), code(Subcuenta), code(CodigoNuevo),
                                             code(Queda), arrange::field(Label1(Longitud), Text1(Longitud)),
                                             arrange::field(lblIdentidad, cboIdentidad)}),
                            arrange::plain(chkFuera), arrange::plain(lblResumen), arrange::filling(dbg),
                            arrange::plain(barProgreso),
                            arrange::buttons({&cmdVer, &cmdAplicar, &cmdInforme, &cmdSalir})}));
}

void frmRenumerar::onLoad() {
    DirectWindow::onLoad();
    olvidar();
}

void frmRenumerar::onKeyUp(int& code, int shift) {
    if (code == key::F(1)) return buscar(byCode);
    if (code == key::F(2)) return buscar(byName);
    DirectWindow::onKeyUp(code, shift);
}

// --- what is asked for

void frmRenumerar::elegirClase() {
    const Clase chosen = clase();
    const std::pair<int, bool> shown[] = {{Subcuenta, chosen != Digitos},
                                          {CodigoNuevo, chosen == Cuenta},
                                          {Queda, chosen == Fundir},
                                          {Longitud, chosen == Digitos}};
    for (const auto& [field, visible] : shown) {
        Label1(field).Visible = Text1(field).Visible = visible;
        if (field != Longitud) Text1(field + 1).Visible = visible;
    }
    lblIdentidad.Visible = cboIdentidad.Visible = chosen == Fundir;
    chkFuera.Visible = chosen == Cuenta;
    olvidar();
}

/// The code is completed as where one is typed, unless a sub-account has it as it is.
void frmRenumerar::dejarCodigo(int field) {
    std::string& typed = Text1(field).Text;
    std::string& meaning = Text1(field + 1).Text;
    typed = text::trim(typed);
    meaning.clear();
    if (typed.empty() || asksForNextCode(typed)) return;
    const auto digits = digitosSubcuenta(instanciaActual().sesion().Parametros());
    if (field == CodigoNuevo) {
        typed = completedCode(typed, digits);
        if (const auto group = planAccount(typed, ejercicioActivo()))
            meaning =
                "de la cuenta " + group->Fields("PCta_Cta").Value.text() + " " + group->Fields("PCta_Des").Value.text();
        return;
    }
    auto found = subaccount("PCta_Cta = " + literal(typed));
    if (found->Eof()) {
        typed = completedCode(typed, digits);
        found = subaccount("PCta_Cta = " + literal(typed));
    }
    meaning = found->Eof() ? "No hay ninguna subcuenta con este código" : found->Fields("PCta_Des").Value.text();
}

void frmRenumerar::buscar(std::int16_t mode) {
    for (const int field : {Subcuenta, Queda}) {
        if (activeControl() != &Text1(field)) continue;
        const std::int32_t id = fnBuscarCuentas(mode, false, false);
        if (id == 0) return;
        const auto found = subaccount("PCta_Id = " + std::to_string(id));
        if (found->Eof()) return;
        Text1(field).Text = text::trimEnd(found->Fields("PCta_Cta").Value.text());
        Text1(field + 1).Text = found->Fields("PCta_Des").Value.text();
        return olvidar();
    }
}

std::optional<RenumberingRequest> frmRenumerar::peticion() {
    const auto typed = [this](int field) { return text::trim(Text1(field).Text); };
    if (clase() == Cuenta) return AccountToRenumber{typed(Subcuenta), typed(CodigoNuevo), chkFuera.Value()};
    if (clase() == Fundir)
        return AccountsToMerge{typed(Subcuenta), typed(Queda),
                               static_cast<AccountsToMerge::Identity>(cboIdentidad.ListIndex())};
    constexpr std::size_t most = 3;
    const std::string digits = typed(Longitud);
    if (text::isNumericCode(digits) && digits.size() <= most) return DigitsToChange{std::stoi(digits)};
    warn("Falta el número de dígitos, de 4 a 15.", Text1(Longitud));
    return {};
}

// --- what it would do

void frmRenumerar::olvidar() {
    plan_.reset();
    applied_ = false;
    cmdAplicar.Enabled = cmdInforme.Enabled = false;
    showCodes(dbg, {});
    lblResumen.Caption = explained[clase()];
}

void frmRenumerar::ver() {
    const auto wanted = peticion();
    if (!wanted) return;
    olvidar();
    try {
        const BusyGuard busy(*this);
        tell("Se mira lo que pasaría...");
        desktop().processPending();
        plan_ = planRenumbering(instanciaActual().sesion(), *wanted);
    } catch (const std::exception& failure) {
        tell({});
        return warn(failure.what(), cmdVer);
    }
    request_ = *wanted;
    mostrar();
}

void frmRenumerar::mostrar() {
    showCodes(dbg, plan_->codes);
    lblResumen.Caption = inLines(*plan_);
    cmdAplicar.Enabled = plan_->allowed();
    cmdInforme.Enabled = true;
    tell(plan_->allowed() ? plan_->title + ": todavía no se ha escrito nada." : plan_->title + ": no se puede.",
         plan_->allowed() ? StatusKind::Plain : StatusKind::Warning);
}

// --- doing it

void frmRenumerar::aplicar() {
    if (!plan_ || !confirmInPlace(plan_->title + ".\n" + countsText(*plan_) + "\n\n¿Quiere hacerlo?",
                                  message::Exclamation, sTituloVentana))
        return;
    try {
        const BarInUse inUse(barProgreso);
        saveWithPatience([this] { applyRenumbering(instanciaActual().sesion(), request_, *plan_, progreso()); });
    } catch (const std::exception& failure) {
        olvidar();
        return warn(failure.what(), cmdVer);
    }
    terminar();
}

/// With other digits nothing more can be asked for until the company is opened anew.
void frmRenumerar::terminar() {
    applied_ = true;
    cmdAplicar.Enabled = false;
    if (std::holds_alternative<DigitsToChange>(request_)) {
        changedDigits_ = true;
        cboQue.Enabled = Text1(Longitud).Enabled = cmdVer.Enabled = false;
    }
    setFocus(cmdInforme);
    tell(plan_->title + ": se ha hecho.", StatusKind::Good);
}

RenumberingProgress frmRenumerar::progreso() {
    return [this, next = desktop().now() + patience](std::int64_t done, std::int64_t total) mutable {
        if (desktop().now() < next) return true;
        barProgreso.Visible = true;
        barProgreso.Value = static_cast<int>(done * barProgreso.Max / std::max<std::int64_t>(total, 1));
        tell("Se escribe (Esc: parar sin escribir nada)");
        const bool stopped = desktop().stopAsked();
        next = desktop().now() + period;
        return !stopped;
    };
}

void frmRenumerar::guardarInforme() {
    if (!plan_) return;
    const auto path = desktop().chooseSaveFile("Cambio de cuentas.txt", "Texto (*.txt)");
    if (!path) return;
    try {
        writeReport(*path, *plan_, instanciaActual().sesion().Parametros(), desktop().today(), applied_);
        tell("Se ha guardado " + *path, StatusKind::Good);
    } catch (const std::exception& failure) {
        warn(failure.what(), cmdInforme);
    }
}

}  // namespace FendaMaestros
