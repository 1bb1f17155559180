#if defined(FENDA_WITH_SQLITE) && defined(FENDA_WITH_HEADLESS)

#include <gtest/gtest.h>

#include "app/operations/Operations.h"
#include "platform/sqlite/Session.h"
#include "session/SesionSql.h"
#include "tests/support/ScriptedPerson.h"

namespace FendaMaestros {

namespace {

using Person = testing::ScriptedPerson;

/// What the menu opens for operations that take arguments.
class LookupScreens : public ::testing::Test {
protected:
    LookupScreens() {
        ParametrosEmpresa parameters;
        parameters.set("Par_Ejercicio", 2010);
        parameters.set("Par_CtaNum", 8);
        parameters.set("Par_OrContaNom", 0);
        session = std::make_unique<SesionSql>(memory, parameters);
        maes.MyBd = session.get();
        memory->run(
            {"INSERT INTO PCta (PCta_Cta, PCta_Des, PCta_Subcuenta, PCta_bActiva) VALUES "
             "('43000001', 'Zeta', 1, 1), ('43000002', 'Beta', 1, 0)",
             {}});
    }

    static std::string result(Form& form) { return Person::control<Label>(form, "lblResultado").Caption; }

    Person person;
    HeadlessDesktop desktop{person};
    ComponentRegistry components;
    std::shared_ptr<ConexionBd> memory = sqlite::openMemory();
    std::unique_ptr<SesionSql> session;
    FendaMaes maes{desktop, components};
};

TEST_F(LookupScreens, ASearchOpensTheSubAccountThatWasChosen) {
    std::string opened;
    const Person::Visit look = [&](Form& account) {
        opened += Person::text(account, "Text1(0)") + " ";
        person.escape(account);
    };
    const Person::Visit choose = [&](Form& dialog) { person.press(dialog, "cmdAceptar"); };
    const Person::Visit leave = [&](Form& dialog) { person.escape(dialog); };
    const Person::Visit search = [&](Form& form) {
        person.press(form, "cmdBuscar(0)");
        EXPECT_EQ(result(form), "43000001 Zeta");
        form.keyUp({key::Enter, shift::None});
        person.hands.key(form, {key::Tab, shift::None});
        person.enter(form);
        EXPECT_EQ(result(form), "43000002 Beta") << "Enter presses, unless it was pressed elsewhere";
        person.press(form, "cmdBuscar(0)");
        EXPECT_EQ(result(form), "No se ha elegido nada.");
        person.escape(form);
    };
    person.visits = {search, choose, look, choose, look, leave};
    findOperation("fnBuscarCuentas")->open(maes);
    EXPECT_EQ(opened, "43000001 43000002 ");

    memory->run(
        {"INSERT INTO PCta (PCta_Cta, PCta_Des, PCta_Plan, PCta_Subcuenta) VALUES ('430', 'Plan', 2008, 0)", {}});
    const Person::Visit official = [&](Form& form) {
        person.press(form, "cmdBuscar(3)");
        EXPECT_EQ(result(form), "430 Plan");
        person.escape(form);
    };
    person.visits = {official, choose};
    findOperation("fnBuscarCuentas")->open(maes);
}

TEST_F(LookupScreens, KeysFollowTheFiscalYearAndSubKeysTheKey) {
    person.visits.push_back([&](Form& form) {
        auto& keys = Person::control<ComboBox>(form, "cboClave");
        auto& subKeys = Person::control<ComboBox>(form, "cboSubclave");
        EXPECT_EQ(keys.ListCount(), 14);
        EXPECT_FALSE(subKeys.Enabled);
        person.hands.choose(form, keys, 12);
        EXPECT_EQ(subKeys.ListCount(), 20);
        person.fill(form, "Text1", "2013");
        EXPECT_EQ(keys.ListCount(), 1);
        person.fill(form, "Text1", "2012");
        EXPECT_EQ(keys.ListCount(), 14);
        person.escape(form);
    });
    findOperation("jCargaClavesRetencion")->open(maes);
}

TEST_F(LookupScreens, AnIdentifierIsExplained) {
    person.visits.push_back([&](Form& form) {
        person.fill(form, "Text1", "b-33778813");
        person.enter(form);
        EXPECT_EQ(result(form),
                  "B33778813 no es válido\nCIF de una sociedad de responsabilidad limitada\nControl esperado: 2\n"
                  "Norma: Real Decreto 1065/2007, artículo 22; Orden EHA/451/2008");
        EXPECT_EQ(form.statusLine()->shown(), "! B33778813: el dígito de control debería ser 2");
        person.fill(form, "Text1", "XI123456789");
        person.enter(form);
        EXPECT_NE(result(form).find("\nSegún las normas de hoy es válido\n"), std::string::npos) << result(form);
        person.escape(form);
    });
    findOperation("FnVerificarCif")->open(maes);
}

TEST_F(LookupScreens, AnAccountOutsideThePlanIsAskedForOverItsScreen) {
    person.answers = {Answer::Yes};
    person.visits.push_back([&](Form& form) {
        person.fill(form, "Text1", "99900001");
        person.enter(form);
        EXPECT_EQ(result(form), "La cuenta 99900001 vale para el plan 2008.");
        person.hands.type(form, "'or'1");
        person.press(form, "cmdComprobar");
        EXPECT_EQ(result(form), "Solo cifras, sin espacios ni comas.");
        person.escape(form);
    });
    findOperation("msValidaCuentaPlan")->open(maes);
    EXPECT_EQ(person.messages.size(), 1u);
}

TEST_F(LookupScreens, ANewAccountHasTheDigitsOfTheCompanyAndIsInThePlanOrAskedFor) {
    std::vector<std::string> created;
    const Person::Visit leave = [&](Form& screen) {
        created.push_back(Person::text(screen, "Text1(0)"));
        person.escape(screen);
    };
    person.visits.push_back([&](Form& form) {
        const auto told = [&](const char* typed) {
            person.fill(form, "Text1", typed);
            person.press(form, "cmdComprobar");
            return result(form);
        };
        EXPECT_EQ(told("572000012345"), "572000012345 no vale: las subcuentas de la empresa tienen 8 dígitos.");
        EXPECT_EQ(told("43000001"), "La cuenta 43000001 ya existe.");
        EXPECT_EQ(told("4,3,5"), "Solo cifras, sin espacios ni comas.");
        EXPECT_NE(told("99999999,").find("No es posible calcular"), std::string::npos);
        person.answers = {Answer::No, Answer::Yes, Answer::Yes, Answer::Yes};
        EXPECT_EQ(told("43,5"), "No se ha creado ninguna cuenta.");
        EXPECT_TRUE(created.empty());
        for (const char* typed : {"43.5", "430,", "430"}) told(typed);
        person.escape(form);
    });
    person.visits.insert(person.visits.end(), 3, leave);
    findOperation("CrearNuevaCuenta")->open(maes);
    EXPECT_EQ(created, (std::vector<std::string>{"43000005", "43000003", "43000003"}));
}

TEST_F(LookupScreens, AnObjectThatEndsGivesWayToTheNewestOfTheOthers) {
    auto second = std::make_unique<FendaMaes>(desktop, components);
    auto third = std::make_unique<FendaMaes>(desktop, components);
    EXPECT_EQ(InstanciaActual, third.get());
    second.reset();
    EXPECT_EQ(InstanciaActual, third.get());
    third.reset();
    EXPECT_EQ(InstanciaActual, &maes);
}

TEST(Arguments, ANumberIsWholeAndOfSixteenBits) {
    const Arguments given({"-1", "32767", "32768", "1x", "", "1,5"});
    EXPECT_EQ(given.number(0, 0), -1);
    EXPECT_EQ(given.number(1, 0), 32767);
    for (const std::size_t wrong : {2u, 3u, 4u, 5u}) EXPECT_THROW(given.number(wrong, 0), std::invalid_argument);
    EXPECT_EQ(given.number(6, 7), 7);
}

}  // namespace

}  // namespace FendaMaestros

#endif
