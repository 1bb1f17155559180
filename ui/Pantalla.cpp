#include "ui/Pantalla.h"

#include "component/FendaMaes.h"

namespace FendaMaestros {

namespace {

constexpr int busyPointer = 13;
constexpr int defaultPointer = 0;

}  // namespace

Pantalla::Pantalla() : Pantalla(instanciaActual().desktop()) {}

void Pantalla::onLoad() {
    Ayuda.Conexion = instanciaActual().sesion().Conexion();
    Ayuda.ColorFoco = colorFoco;
    Ayuda.ColorNormal = colorNormal;
}

void Pantalla::onKeyUp(int& code, int /*shift*/) {
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

void Pantalla::editField(TextBox& field, std::function<void()> left, std::function<void()> entered) {
    field.GotFocus = [this, &field, entered = std::move(entered)] {
        Ayuda.EntrarCampo(field, {}, 0);
        if (entered) entered();
    };
    field.LostFocus = [this, &field, left = std::move(left)] {
        Ayuda.SalirCampo(field, {}, 0);
        if (left) left();
    };
}

void Pantalla::avisar(const std::string& text, Control& field, int style) {
    Tag = "E";
    ask(text, style, sTituloVentana);
    setFocus(field);
}

bool Pantalla::confirmar(const std::string& text, int icon) {
    return ask(text, message::YesNo + icon + message::SecondIsDefault, sTituloVentana) == Answer::Yes;
}

bool Pantalla::confirmarEnSitio(const std::string& text, int icon, const std::string& title) {
    Tag = "e";
    const bool yes = ask(text, message::YesNo + icon + message::SecondIsDefault, title) == Answer::Yes;
    if (!awaitsRelease()) Tag.clear();
    return yes;
}

Espera::Espera(Desktop& desktop) : desktop_(desktop) {
    desktop_.setPointer(busyPointer);
    desktop_.processPending();
}

Espera::~Espera() { desktop_.setPointer(defaultPointer); }

Ocupado::Ocupado(Form& form, bool hourglass) : form_(form), hourglass_(hourglass) {
    form_.Enabled = false;
    if (hourglass_) form_.desktop().setPointer(busyPointer);
}

Ocupado::~Ocupado() {
    form_.Enabled = true;
    if (!hourglass_) return;
    form_.desktop().setPointer(defaultPointer);
    form_.desktop().processPending();
}

}  // namespace FendaMaestros
