#include "app/window/PantallaEmpresa.h"

#include <algorithm>
#include <stdexcept>

#include "session/ParametrosEmpresa.h"
#include "storage/ReferenceData.h"
#include "toolkit/Text.h"
#include "ui/CodedList.h"

namespace FendaMaestros {

PantallaEmpresa::PantallaEmpresa(Desktop& desktop) : DirectWindow(desktop) {
    for (storage::ReferenceRows provinces("provincias"); provinces.next();) {
        provinceCodes_.emplace_back(provinces.value("PROV_COD"));
        cboProvincia.AddItem(codedList::item(provinceCodes_.back(), provinces.value("PROV_NOM")));
    }
    cboOrden.AddItem("Nombre y apellidos, como Lucía Vega Prado");
    cboOrden.AddItem("Apellidos y nombre, como Vega Prado, Lucía");
    lblProvincia.Caption = "La de la empresa; 99 si está en el extranjero.";
    lblOrden.Caption = "Cómo se escriben las personas en listas e informes.";
    txtNombre.MaxLength = 60;
    txtEjercicio.MaxLength = 4;
    txtDigitos.MaxLength = 2;
}

void PantallaEmpresa::colocar(Label& above, std::vector<Control*> commands) {
    add(above, "lblLugar");
    add(Label1, "Label1");
    add(txtNombre, "txtNombre");
    add(lblNombre, "lblNombre");
    add(Label2, "Label2");
    add(txtEjercicio, "txtEjercicio");
    add(lblEjercicio, "lblEjercicio");
    add(Label3, "Label3");
    add(txtDigitos, "txtDigitos");
    add(lblDigitos, "lblDigitos");
    add(Label4, "Label4");
    add(cboProvincia, "cboProvincia");
    add(lblProvincia, "lblProvincia");
    add(Label5, "Label5");
    add(cboOrden, "cboOrden");
    add(lblOrden, "lblOrden");
    for (const Campo& campo : campos()) {
        editField(campo.box);
        campo.box.Change = [this, campo] { explicar(campo); };
    }
    for (TextBox* number : {&txtEjercicio, &txtDigitos})
        number->KeyPress = [this, number](int& keyAscii) { Ayuda.FiltrarTecla(*number, keyAscii, false, 0); };
    layOut(arrange::column({arrange::plain(above),
                            arrange::fields({arrange::field(Label1, txtNombre), arrange::plain(lblNombre),
                                             arrange::field(Label2, txtEjercicio), arrange::plain(lblEjercicio),
                                             arrange::field(Label3, txtDigitos), arrange::plain(lblDigitos),
                                             arrange::field(Label4, cboProvincia), arrange::plain(lblProvincia),
                                             arrange::field(Label5, cboOrden), arrange::plain(lblOrden)}),
                            arrange::buttons(std::move(commands))}));
}

void PantallaEmpresa::mostrar(const NewCompany& company) {
    txtNombre.Text = company.name;
    txtEjercicio.Text = std::to_string(company.fiscalYear);
    txtDigitos.Text = std::to_string(company.accountDigits);
    const auto province = std::ranges::find(provinceCodes_, std::to_string(company.province));
    cboProvincia.setListIndex(province == provinceCodes_.end() ? -1
                                                               : static_cast<int>(province - provinceCodes_.begin()));
    cboOrden.setListIndex(company.nameOrder == 0 ? 0 : 1);
    for (const Campo& campo : campos()) explicar(campo);
    if (company.name.empty()) lblNombre.Caption = ayudaDelNombre();
}

std::optional<NewCompany> PantallaEmpresa::leer() {
    for (const Campo& campo : campos()) {
        const std::string wrong = objecion(campo);
        if (wrong.empty()) continue;
        warn(wrong, campo.box);
        return {};
    }
    if (cboProvincia.ListIndex() < 0) {
        warn("Falta la provincia.", cboProvincia);
        return {};
    }
    return readCompany({.name = txtNombre.Text,
                        .fiscalYear = txtEjercicio.Text,
                        .accountDigits = txtDigitos.Text,
                        .province = provinceCodes_.at(static_cast<std::size_t>(cboProvincia.ListIndex())),
                        .nameOrder = std::to_string(cboOrden.ListIndex())});
}

std::vector<PantallaEmpresa::Campo> PantallaEmpresa::campos() {
    return {{txtNombre, lblNombre, &TypedCompany::name, &PantallaEmpresa::explicarNombre},
            {txtEjercicio, lblEjercicio, &TypedCompany::fiscalYear, &PantallaEmpresa::explicarEjercicio},
            {txtDigitos, lblDigitos, &TypedCompany::accountDigits, &PantallaEmpresa::explicarDigitos}};
}

void PantallaEmpresa::explicar(const Campo& campo) {
    const std::string wrong = objecion(campo);
    // A line stays as wide as a small screen.
    campo.says.Caption = wrong.empty() ? (this->*campo.explain)() : text::replaced(wrong, " debe ser", "\ndebe ser");
}

/// The other fields do not matter here: they are taken as right.
std::string PantallaEmpresa::objecion(const Campo& campo) const {
    TypedCompany typed{.name = "-"};
    typed.*campo.value = campo.box.Text;
    try {
        if (campo.box.Text.empty() && &campo.box != &txtNombre) return "Falta el número.";
        readCompany(typed);
        return &campo.box == &txtNombre ? objecionAlNombre(text::trim(typed.name)) : "";
    } catch (const std::invalid_argument& error) {
        return error.what();
    }
}

std::string PantallaEmpresa::explicarEjercicio() const {
    const auto year = static_cast<std::int16_t>(std::stoi(txtEjercicio.Text));
    return "El año de la contabilidad. Rige el plan contable de " + std::to_string(planEnVigor(year)) + ".";
}

std::string PantallaEmpresa::explicarDigitos() const {
    const auto digits = static_cast<std::size_t>(std::stoi(txtDigitos.Text));
    return "De 4 a 15. Con " + txtDigitos.Text + ", el cliente 5 es la 43" + std::string(digits - 3, '0') + "5.";
}

}  // namespace FendaMaestros
