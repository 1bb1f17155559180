#if defined(FENDA_WITH_SQLITE) && defined(FENDA_WITH_HEADLESS)

#include <gtest/gtest.h>

#include "app/Composition.h"
#include "app/window/frmDatosEmpresa.h"
#include "platform/sqlite/DataFolder.h"
#include "tests/session/TemporaryFolder.h"
#include "tests/support/ScriptedPerson.h"

namespace FendaMaestros {

namespace {

class CompanyData : public ::testing::Test {
protected:
    CompanyData() { companies.create({.name = "Una", .fiscalYear = 2026}); }

    /// The window over the company as it is stored now.
    bool visit(const testing::ScriptedPerson::Visit& look) {
        OpenCompany company(desktop, companies.open("Una"));
        frmDatosEmpresa window(desktop, company.session(), "Una", "la carpeta");
        person.visits = {look};
        window.show();
        return window.changed();
    }
    std::string stored(const char* name) const { return companies.open("Una")->Parametros().Item(name).Value.text(); }

    tests::TemporaryFolder folder;
    sqlite::DataFolder companies{folder.path() / "datos"};
    testing::ScriptedPerson person;
    HeadlessDesktop desktop{person};
};

TEST_F(CompanyData, WhatEntailsNothingIsStoredAtOnce) {
    EXPECT_TRUE(visit([&](Form& form) {
        person.fill(form, "txtNombre", " Una y otra, S.A. ");
        auto& provinces = person.control<ComboBox>(form, "cboProvincia");
        EXPECT_EQ(provinces.Text(), "28 - Madrid");
        person.hands.choose(form, provinces, provinces.ListCount() - 1);
        person.hands.choose(form, person.control<ComboBox>(form, "cboOrden"), 1);
        person.press(form, "cmdGuardar");
    }));
    EXPECT_EQ(stored("Par_Nombre"), "Una y otra, S.A.");
    EXPECT_EQ(stored("Par_Provincia"), "99");
    EXPECT_EQ(stored("Par_OrContaNom"), "1");
    EXPECT_EQ(stored("Par_CtaNum") + stored("Par_Ejercicio"), "82026");
    EXPECT_FALSE(visit([&](Form& form) {
        EXPECT_EQ(person.text(form, "txtNombre"), "Una y otra, S.A.");
        person.press(form, "cmdGuardar");
        person.escape(form);
    }));
}

TEST_F(CompanyData, YearAndDigitsAreStoredOnceThePersonKnowsWhatThatEntails) {
    companies.open("Una")->Conexion()->run({"INSERT INTO PCta (PCta_Cta, PCta_Subcuenta) VALUES ('43000001', 1)", {}});
    const auto change = [&](Form& form) {
        person.fill(form, "txtEjercicio", "2007");
        person.fill(form, "txtDigitos", "10");
        person.press(form, "cmdGuardar");
        person.escape(form);
    };
    person.answers = {Answer::No};
    EXPECT_FALSE(visit(change));
    EXPECT_EQ(stored("Par_Ejercicio") + stored("Par_CtaNum"), "20268");
    const std::string& said = person.messages.back().text;
    for (const char* part : {"de 2026 a 2007", "plan contable de 1990", "de 8 a 10 dígitos", "La subcuenta que hay"})
        EXPECT_NE(said.find(part), std::string::npos) << said;
    person.answers = {Answer::Yes};
    EXPECT_TRUE(visit(change));
    EXPECT_EQ(stored("Par_Ejercicio") + stored("Par_CtaNum"), "200710");
}

}  // namespace

}  // namespace FendaMaestros

#endif
