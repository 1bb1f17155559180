#include "ui/Screen.h"

#include "session/ErrorBd.h"
#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

constexpr int busyPointer = 13;

std::string unsavedText(const std::string& what) { return "Sin guardar: " + what; }

void setUp(AyudaCampos& help) {
    help.Conexion = instanciaActual().sesion().Conexion();
    help.ColorFoco = focusColor;
    help.ColorNormal = normalColor;
}

}  // namespace

AyudaCampos searchHelp() {
    AyudaCampos help(instanciaActual().desktop());
    setUp(help);
    return help;
}

Screen::Screen() : Screen(instanciaActual().desktop()) {}

Screen::Screen(Desktop& desktop) : Form(desktop), Ayuda(desktop) {
    setStatusLine(lblEstado, "lblEstado");
    explainKey({key::Enter}, "Ir al campo siguiente");
    explainKey({key::Escape}, "Salir");
}

void Screen::onLoad() { setUp(Ayuda); }

bool Screen::outlives(const std::exception& failure) {
    const auto* error = dynamic_cast<const ErrorBd*>(&failure);
    if (!error || error->kind() != ErrorBd::Kind::Lost) return false;
    markPendingMessage();
    ask(error->what(), message::Exclamation, sTituloVentana);
    return true;
}

void Screen::onKeyUp(int& code, int /*shift*/) {
    if (code == key::Escape) return unload();
    if (code == key::Enter) {
        code = 0;
        if (Tag.empty()) sendTab();
        Tag.clear();
        return;
    }
    Tag.clear();
    desktop().processPending();
}

void Screen::showKeys() {
    markPendingMessage();
    ask(keyList(*this), message::Information, sTituloVentana);
    unmarkUnlessAwaited();
}

void Screen::editField(TextBox& field, std::function<void()> left, std::function<void()> entered) {
    field.GotFocus = [this, &field, entered = std::move(entered)] {
        Ayuda.EntrarCampo(field, {}, 0);
        if (entered) entered();
    };
    field.LostFocus = [this, &field, left = std::move(left)] {
        Ayuda.SalirCampo(field, {}, 0);
        if (left) left();
    };
}

void Screen::warn(const std::string& text, Control& field, int style) {
    markPendingMessage('E');
    ask(text, style, sTituloVentana);
    setFocus(field);
}

bool Screen::confirm(const std::string& text, int icon) {
    return ask(text, message::YesNo + icon + message::SecondIsDefault, sTituloVentana) == Answer::Yes;
}

bool Screen::confirmInPlace(const std::string& text, int icon, const std::string& title) {
    markPendingMessage();
    const bool yes = ask(text, message::YesNo + icon + message::SecondIsDefault, title) == Answer::Yes;
    unmarkUnlessAwaited();
    return yes;
}

void Screen::tellInFront(const std::string& text) {
    tell(text + (lblEstado.Caption.empty() ? "" : " · " + lblEstado.Caption), lblEstado.Kind);
}

void Screen::tellBehind(const std::string& text, StatusKind kind) {
    tell((lblEstado.Caption.empty() ? "" : lblEstado.Caption + " · ") + text, kind);
}

void Screen::replacing(const std::function<void()>& step) {
    const std::string before = unsaved();
    tell({});
    step();
    if (before.empty() || !isOpen() || unsaved() == before) return;
    tellInFront(unsavedText(before));
}

void Screen::onUnload() {
    if (const std::string what = unsaved(); !what.empty()) desktop().leaveWords(*this, unsavedText(what));
}

void Screen::exportRows(ListingGrid& grid, const std::string& title) {
    markPendingMessage();
    grid.exportRows(title);
    unmarkUnlessAwaited();
}

void Screen::unmarkUnlessAwaited() {
    if (!awaitsRelease()) Tag.clear();
}

Screen::SavingSign::SavingSign(Screen& screen)
    : screen_(screen), told_(screen.lblEstado.Caption), kind_(screen.lblEstado.Kind), busy_(screen) {
    screen_.tell("Guardando. Si otro programa tiene ocupados los datos, se espera hasta cinco segundos.");
    screen_.desktop().processPending();
}

Screen::SavingSign::~SavingSign() { screen_.tell(std::move(told_), kind_); }

BusyPointer::BusyPointer(Desktop& desktop) : desktop_(desktop), found_(desktop.pointer()) {
    desktop_.setPointer(busyPointer);
    desktop_.processPending();
}

BusyPointer::~BusyPointer() { desktop_.setPointer(found_); }

BusyGuard::BusyGuard(Form& form, bool hourglass)
    : form_(form), hourglass_(hourglass), enabled_(form.Enabled), pointer_(form.desktop().pointer()) {
    form_.Enabled = false;
    if (hourglass_) form_.desktop().setPointer(busyPointer);
}

BusyGuard::~BusyGuard() {
    form_.Enabled = enabled_;
    if (!hourglass_) return;
    form_.desktop().setPointer(pointer_);
    form_.desktop().processPending();
}

}  // namespace FendaMaestros
