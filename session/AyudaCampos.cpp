#include "session/AyudaCampos.h"

#include <algorithm>

#include "session/TypedText.h"
#include "session/frmBuscar.h"
#include "toolkit/Format.h"
#include "toolkit/Keys.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

std::string shownDate(const std::string& text, const std::string& mask) {
    const auto date = typed::date(text);
    return date ? date->text() : format(text, mask);
}

std::string shownAmount(const std::string& text, const std::string& mask) {
    const auto amount = typed::amount(text);
    return amount ? format(*amount, mask) : text;
}

}  // namespace

void AyudaCampos::EntrarCampo(TextBox& field, const std::string& /*text*/, int /*work*/) {
    field.BackColor = ColorFoco;
    field.AllSelected = true;
}

void AyudaCampos::SalirCampo(TextBox& field, const std::string& mask, int /*work*/) {
    field.BackColor = ColorNormal;
    field.AllSelected = false;
    if (mask.empty()) return;
    field.Text = mask == "dd/mm/yyyy" ? shownDate(field.Text, mask) : shownAmount(field.Text, mask);
}

void AyudaCampos::FiltrarTecla(TextBox& /*field*/, int& keyAscii, bool marks, int work) {
    const bool control = keyAscii > 0 && keyAscii < key::Space;
    const bool mark = marks && (keyAscii == ',' || keyAscii == '.' || keyAscii == '-');
    const bool letter =
        work == withLetters && ((keyAscii >= 'A' && keyAscii <= 'Z') || (keyAscii >= 'a' && keyAscii <= 'z'));
    if (!control && !mark && !letter && (keyAscii < '0' || keyAscii > '9')) keyAscii = 0;
}

void AyudaCampos::Buscar(const std::string& sql, const std::string& searchColumn, const std::string& caption1,
                         const std::string& caption2, const std::string& title, Twips width1, Twips width2,
                         int /*fixed*/, std::string& result) {
    frmBuscar dialog(*this, Conexion->Execute(sql), searchColumn, {{{caption1, width1}, {caption2, width2}}});
    dialog.Caption = title;
    dialog.show();
    result = dialog.result();
}

std::vector<std::string> AyudaCampos::values(const std::string& result) {
    std::vector<std::string> found;
    for (std::size_t begin = 0; !result.empty() && begin <= result.size();) {
        const std::size_t end = std::min(result.find(frmBuscar::separator, begin), result.size());
        found.push_back(result.substr(begin, end - begin));
        begin = end + 1;
    }
    return found;
}

std::int64_t AyudaCampos::chosenId(const std::string& result) {
    return text::length(result) <= 2 ? 0 : Variant(values(result).front()).integer();
}

}  // namespace FendaMaestros
