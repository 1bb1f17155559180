#include "app/window/frmCopia.h"

#include <algorithm>
#include <filesystem>

#include "app/Place.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

/// "Copia de fenda 2026-11-23": those of several days are listed by day.
std::string nameOfDay(const Date& day) {
    const std::string text = day.text();
    return "Copia de fenda " + text.substr(6) + "-" + text.substr(3, 2) + "-" + text.substr(0, 2);
}

}  // namespace

frmCopia::frmCopia(std::string folder, Copy copy) : copy_(std::move(copy)) {
    Caption = sTituloVentana = "Copia de seguridad";
    add(lblAyuda, "lblAyuda");
    add(Label1, "Label1");
    add(Text1, "Text1");
    add(Label2, "Label2");
    add(Text2, "Text2");
    add(cmdCopiar, "cmdCopiar");
    add(cmdExaminar, "cmdExaminar");
    add(cmdSalir, "cmdSalir");
    editField(Text1);
    editField(Text2);
    Text1.Text = std::move(folder);
    Text2.Text = nameOfDay(desktop().today());
    cmdCopiar.Click = [this] { copiar(); };
    cmdExaminar.Click = [this] { examinar(); };
    cmdSalir.Click = [this] { unload(); };
    layOut(arrange::column({arrange::plain(lblAyuda),
                            arrange::fields({arrange::field(Label1, Text1), arrange::field(Label2, Text2)}),
                            arrange::buttons({&cmdCopiar, &cmdExaminar, &cmdSalir})}));
}

void frmCopia::examinar() {
    if (const auto folder = desktop().chooseFolder("Dónde se deja la copia", Text1.Text)) Text1.Text = *folder;
    setFocus(cmdCopiar);
}

void frmCopia::copiar() {
    const std::string folder = typedPath(Text1.Text), name = text::trim(Text2.Text);
    if (folder.empty()) return warn("Falta la carpeta donde se deja la copia.", Text1);
    if (name.empty()) return warn("Falta el nombre de la copia.", Text2);
    const std::filesystem::path destination = std::filesystem::absolute(std::filesystem::path(folder) / name);
    std::string report;
    try {
        const BusyGuard busy(*this);
        tell("Se está haciendo la copia...");
        desktop().processPending();
        report = text::trim(copy_(destination.string()));
    } catch (const std::exception& failure) {
        tell({});
        return warn(failure.what(), std::filesystem::exists(destination) ? Text2 : Text1);
    }
    folder_ = folder;
    tell({});
    ask(report, message::Ok + message::Information, sTituloVentana);
    unload();
}

}  // namespace FendaMaestros
