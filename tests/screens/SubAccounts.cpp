#include "tests/support/CompanyTest.h"
#include "ui/Screen.h"

namespace FendaMaestros::testing {
namespace {

constexpr const char* done = "Grabación finalizada";
const std::string failed = "Error en la grabación de la cuenta";

/// Four accounts of the plan; a customer with journal lines of several years and a bank, each with values of its own.
class SubAccounts : public CompanyTest {
protected:
    SubAccounts() {
        insert("PCta (PCta_Cta, PCta_Des, PCta_Plan, PCta_PlanSec, PCta_Subcuenta, PCta_bActiva)",
               {{"400", "Proveedores", 2008, 1, 0, 1},
                {"430", "Clientes", 2008, 1, 0, 1},
                {"572", "Bancos", 2008, 1, 0, 1},
                {"473", "Retenciones", 2008, 1, 0, 1}});
        for (int i = 1; i <= 9; ++i) {
            insert("Centro (Centro_Cod, Centro_Des)", {{i, "Centro " + std::to_string(i)}});
            insert("Dpto (Dpto_Cod, Dpto_Des)", {{i, "Departamento " + std::to_string(10 - i)}});
        }
        insert("KXComun.dbo.Nif (Nif_Doc, Nif_Nom)", {{"12345678Z", "Ana"}, {"A1", "Sociedad"}});
        insert(
            "PCta (PCta_Cta, PCta_Des, PCta_Subcuenta, PCta_bActiva, Pcta_IdNif, PCta_IdCen, PCta_IdDpto, Pcta_Origen, "
            "Pcta_IdOrigen)",
            {{"43000001", "Antigua", 1, 1, 1, 3, 4, 7, 9}, {"57200000", "Caja", 1, 0, 2, 5, 6, 8, 10}});
        customer = id("SELECT PCta_Id FROM PCta WHERE PCta_Cta = '43000001'");
        bank = customer + 1;
        const char* const lines = "Apu (Apu_Eje, Apu_Cta, Apu_IdCta, Apu_CtaDes)";
        insert(lines, {{2009, "43000001", customer, ""}, {2010, "43000001", customer, "Con texto"}});
    }

    std::string everything() {
        return rows("SELECT * FROM PCta") + rows("SELECT * FROM Apu") + rows("SELECT * FROM KXComun.dbo.Nif");
    }
    std::string stored(const std::string& code) {
        return rows(
            "SELECT PCta_Des, PCta_bActiva, Pcta_IdNif, PCta_IdCen, PCta_IdDpto, PCta_CtaAso, PCta_IdCtaAso, "
            "PCta_CtaIrpfAso, Pcta_Origen, Pcta_IdOrigen FROM PCta WHERE PCta_Cta = '" +
            code + "'");
    }
    std::string codes() { return rows("SELECT PCta_Cta FROM PCta WHERE PCta_Subcuenta = 1 ORDER BY PCta_Cta"); }

    /// Saves again and again, the n-th statement of `connection` made to fail, until none is left. Each time the person
    /// is told and the screen keeps its texts; `check` looks at the data.
    void saveWithFailures(FailingConexion& connection, const ScriptedPerson::Visit& fill,
                          const std::function<void(int)>& check) {
        connection.failAt(0);
        onNextScreen([&](Form& form) {
            fill(form);
            const std::string code = person.text(form, account::code), name = person.text(form, account::name);
            for (int n = 1;; ++n) {
                ASSERT_LT(n, 30);
                connection.failAt(n);
                person.answers = {Answer::Ok};
                person.press(form, account::save);
                connection.failAt(0);
                EXPECT_FALSE(hasOpenTransaction(*memory) || hasOpenTransaction(*otherMemory)) << n;
                if (person.messages.back().text == done) return;
                EXPECT_EQ(person.messages.back().text, failed + " Fallo provocado") << n;
                EXPECT_TRUE(form.isOpen());
                EXPECT_EQ(person.text(form, account::code) + person.text(form, account::name), code + name);
                check(n);
            }
        });
        maes.jPlanCuentas();
    }
    void fillNew(Form& form) {
        enter(form, account::code, "572,");
        person.fill(form, account::name, "Banco");
    }
    void rename(Form& form, const char* name) {
        enter(form, account::code, "43000001");
        person.fill(form, account::name, name);
    }

    std::int32_t customer = 0, bank = 0;
    std::shared_ptr<ConexionBd> otherMemory = emptyCompany();
    std::shared_ptr<FailingConexion> otherFailing = std::make_shared<FailingConexion>(otherMemory);
    SesionSql other{otherFailing, parameters(2026)};
};

TEST_F(SubAccounts, AFailureAtAnyStatementOfASaveLeavesEverythingAsItWasAndTheScreenAtWork) {
    for (SesionBd* origin : {&session, &other}) {
        maes.MyBdorigen = origin;
        for (const bool isNew : {true, false}) {
            const std::string before = everything();
            saveWithFailures(
                *failing,
                [&](Form& form) { isNew ? fillNew(form) : rename(form, origin == &session ? "Nueva" : "Otra"); },
                [&](int n) { EXPECT_EQ(everything(), before) << "statement " << n; });
            EXPECT_NE(everything(), before);
        }
    }
    EXPECT_EQ(codes(), "43000001|\n57200000|\n57200001|\n57200002|\n");
    EXPECT_EQ(rows("SELECT Apu_CtaDes FROM Apu ORDER BY Apu_Eje"), "Nueva|\nCon texto|\n")
        << "only where there was none";
}

TEST_F(SubAccounts, AFailureOfTheSecondSessionNeverInsertsTwice) {
    maes.MyBdorigen = &other;
    const std::string before = everything();
    saveWithFailures(
        *otherFailing, [&](Form& form) { fillNew(form); },
        [&](int n) { EXPECT_EQ(everything() == before, n == 1) << "begin, and the commit behind that of MyBd"; });
    EXPECT_EQ(codes(), "43000001|\n57200000|\n57200001|\n");
    saveWithFailures(
        *otherFailing, [&](Form& form) { rename(form, "Nueva"); }, [](int) {});
    EXPECT_EQ(stored("43000001"), "Nueva|1|1|3|4||0||7|9|\n") << "a change is saved again";
}

TEST_F(SubAccounts, TwoWrappersOfOneConnectionLeaveNoTraceOfASaveThatTheLastCommitLost) {
    const auto second = std::make_shared<FailingConexion>(memory);
    SesionSql same(second, parameters(2026));
    maes.MyBdorigen = &same;
    const std::string before = everything();
    saveWithFailures(
        *second, [&](Form& form) { fillNew(form); }, [&](int n) { EXPECT_EQ(everything(), before) << n; });
    EXPECT_EQ(codes(), "43000001|\n57200000|\n57200001|\n");
}

TEST_F(SubAccounts, WithoutTheSecondSessionNothingIsSavedAndThePersonIsTold) {
    maes.MyBdorigen = nullptr;
    const std::string before = everything();
    onNextScreen([&](Form& form) {
        fillNew(form);
        pressAndRead(form, account::save,
                     failed + " No se ha indicado la segunda sesión de base de datos (MyBdorigen).");
        EXPECT_EQ(person.text(form, account::code) + person.text(form, account::name), "57200001Banco");
    });
    maes.jPlanCuentas();
    EXPECT_EQ(everything(), before);
    EXPECT_FALSE(hasOpenTransaction(*memory));
}

TEST_F(SubAccounts, ASaveShowsWhatItWaitsForAndLeavesScreenAndPointerAsTheyWere) {
    class Held final : public FailingConexion {
    public:
        using FailingConexion::FailingConexion;
        std::function<void()> look;
        int refusals = 2;
        void BeginTrans() override {
            look();
            if (refusals-- > 0) throw ErrorBd(ErrorBd::Kind::Busy, "Ocupada.");
            FailingConexion::BeginTrans();
        }
    };
    const auto held = std::make_shared<Held>(memory);
    std::vector<std::string> seen;
    held->look = [&] {
        const Form& form = *desktop.activeForm();
        seen.push_back(std::to_string(desktop.pointer()) + (form.Enabled ? " " : " disabled ") +
                       form.statusLine()->Caption);
    };
    SesionSql slow(held, parameters(2026));
    maes.MyBd = &slow;
    onNextScreen([&](Form& form) {
        fillNew(form);
        const BusyPointer around(desktop);
        pressAndRead(form, account::save, done);
        EXPECT_EQ(desktop.pointer(), 13) << "of the guard around";
        EXPECT_TRUE(form.Enabled);
        EXPECT_EQ(form.statusLine()->Caption, "");
    });
    maes.jPlanCuentas();
    EXPECT_EQ(desktop.pointer(), 0);
    const std::string sign =
        "13 disabled Guardando. Si otro programa tiene ocupados los datos, se espera hasta cinco segundos.";
    EXPECT_EQ(seen, std::vector<std::string>(3, sign));
}

TEST_F(SubAccounts, ACodeThatAnotherProgramHasJustTakenIsNotGivenTwice) {
    onNextScreen([&](Form& form) {
        fillNew(form);
        failing->rival = {"INSERT INTO PCta (PCta_Cta, PCta_Des, PCta_Subcuenta) VALUES ('57200001', 'Suya', 1)", {}};
        pressAndRead(form, account::save, failed + " 57200001: acaba de crearse desde otro puesto.");
        pressAndRead(form, account::save, failed);
    });
    maes.jPlanCuentas();
    EXPECT_EQ(rows("SELECT PCta_Des FROM PCta WHERE PCta_Cta = '57200001'"), "Suya|\n");
}

TEST_F(SubAccounts, AnAccountThatAnotherProgramHasChangedOrDeletedIsNotWrittenOver) {
    onNextScreen([&](Form& form) {
        person.fill(form, account::name, "Nombre nuevo");
        failing->rival = {"UPDATE PCta SET PCta_IdCen = 3 WHERE PCta_Cta = '57200000'", {}};
        pressAndRead(form, account::save,
                     failed + " Otro programa ha cambiado la cuenta. Vuelva a buscarla para ver cómo está ahora.");
        EXPECT_EQ(rows("SELECT PCta_Des FROM PCta WHERE PCta_Cta = '57200000'"), "Caja|\n");
        failing->rival = {"DELETE FROM PCta WHERE PCta_Cta = '57200000'", {}};
        pressAndRead(form, account::save,
                     failed + " Otro programa ha eliminado la cuenta. Si la guarda otra vez, se crea de nuevo.");
        EXPECT_EQ(person.text(form, account::name), "Nombre nuevo");
        EXPECT_FALSE(ScriptedPerson::control(form, account::remove).Enabled);
    });
    maes.jPlanCuentas(bank);
}

TEST_F(SubAccounts, AnAccountKeepsItsOriginAndANewOneHasNone) {
    onNextScreen([&](Form& form) {
        enter(form, account::code, "57200000");
        person.fill(form, account::name, "Banco");
        pressAndRead(form, account::save, done);
        enter(form, account::code, "57200000");
        enter(form, account::code, "572,");
        pressAndRead(form, account::save, done);
        enter(form, account::code, "57200001");
        enter(form, account::code, "43000001");
        enter(form, account::document, "A1");
        pressAndRead(form, account::save, done);
    });
    maes.jPlanCuentas();
    EXPECT_EQ(stored("57200000"), "Banco|0|2|5|6||0||8|10|\n");
    EXPECT_EQ(stored("43000001"), "Antigua|1|2|3|4||0||0|9|\n") << "another identity ends it";
    EXPECT_EQ(stored("57200001"), "|1|0|0|0||0||0|0|\n") << "active, although begun after one that is not";
}

TEST_F(SubAccounts, CentresAndDepartmentsGoToTheLinesOfTheirAccountIn2009) {
    insert("PCta (PCta_Cta, PCta_Subcuenta, PCta_IdCen, PCta_IdDpto)",
           {{"40000001", 1, 0, 0}, {"40000002", 1, 8, 0}, {"40000002", 1, 0, 9}});
    insert("Apu (Apu_Eje, Apu_Cta, Apu_IdCen, Apu_IdDpto)", {{2008, "57200000", 70, 71},
                                                             {2009, "57200000", 72, 73},
                                                             {2009, "40000001", 74, 75},
                                                             {2009, "40000002", 76, 77}});
    const std::string before = everything();
    bool assigned = false;
    for (int n = 1; !assigned; ++n) {
        ASSERT_LT(n, 30);
        onNextScreen([&](Form& form) {
            const auto& button = ScriptedPerson::control<CommandButton>(form, "Command1");
            form.focus(ScriptedPerson::control(form, "Command1"));
            EXPECT_NE(button.ToolTip.find(" 2009 "), std::string::npos);
            EXPECT_EQ(form.statusLine()->Caption, button.ToolTip);
            failing->failAt(n);
            pressAndRead(form, "Command1", "Proceso finalizado");
            assigned = true;
        });
        try {
            maes.jPlanCuentas();
        } catch (const ErrorBd&) {
            EXPECT_EQ(everything(), before) << "all or nothing: " << n;
        }
        failing->failAt(0);
    }
    EXPECT_EQ(rows("SELECT Apu_Eje, Apu_Cta, Apu_IdCen, Apu_IdDpto FROM Apu WHERE Apu_IdCen <> 0 ORDER BY Apu_Id"),
              "2009|43000001|3|4|\n2008|57200000|70|71|\n2009|57200000|5|6|\n2009|40000001|74|75|\n"
              "2009|40000002|8|9|\n");
}

TEST_F(SubAccounts, AnEnterThatSaysYesLeavesTheFocusOnTheCodeAndOnlyTheAccountShownIsDeleted) {
    onNextScreen([&](Form& form) {
        const Control& deletes = ScriptedPerson::control(form, account::remove);
        enter(form, account::code, "43000001");
        enter(form, account::linked, "57200000");
        EXPECT_FALSE(deletes.Enabled) << "another account without lines does not make this one deletable";
        enter(form, account::code, "572,");
        EXPECT_FALSE(deletes.Enabled) << "nothing is shown";
        enter(form, account::code, "57200000");
        EXPECT_TRUE(deletes.Enabled);
        person.answersWithEnter = true;
        person.answers = {Answer::Yes, Answer::Yes};
        person.press(form, account::remove);
        expectFocus(form, account::code);
    });
    maes.jPlanCuentas();
    EXPECT_EQ(codes(), "43000001|\n");
}

TEST_F(SubAccounts, TheStatusLineTellsWhatIsLeftUnsavedAndWhatASaveWouldStore) {
    insert("PCta (PCta_Cta, PCta_Des, PCta_Subcuenta, PCta_IdCen)", {{"5720009", "Corta", 1, 99}});
    const std::string unsaved = "Sin guardar: 43000001 Muebles Peñalba";
    onNextScreen([&](Form& form) { EXPECT_NE(form.statusLine()->Caption, "") << "as soon as it is shown"; });
    maes.jPlanCuentas(bank + 1);
    onNextScreen([&](Form& form) {
        const std::string& status = form.statusLine()->Caption;
        enter(form, account::code, "43000001");
        person.press(form, "cmdNav(3)");
        EXPECT_EQ(
            status,
            "El código 5720009 no tiene las 8 cifras de la empresa · Su centro 99 no está en la lista: al guardar "
            "quedará «Centro 3»");
        enter(form, account::code, "43000001");
        EXPECT_EQ(status, "");
        enter(form, account::linked, "57200000");
        person.fill(form, account::name, "Muebles Peñalba");
        person.press(form, "cmdNav(2)");
        EXPECT_EQ(person.text(form, account::code), "57200000") << "behind the account shown, not the linked one";
        EXPECT_EQ(status, unsaved);

        form.focus(ScriptedPerson::control(form, account::linked));
        onNextScreen([&](Form& search) { person.escape(search); });
        person.hands.key(form, {key::F(1), shift::None});
        EXPECT_EQ(status, "La cuenta 57200000 ya no está seleccionada: vuelva a buscarla antes de guardar");
        person.press(form, "cmdNav(1)");
        EXPECT_EQ(person.text(form, account::code), "43000001");
        person.fill(form, account::name, "Muebles Peñalba");
        person.escape(form);
        EXPECT_FALSE(form.isOpen());
    });
    maes.jPlanCuentas();
    EXPECT_EQ(desktop.lastWords(), unsaved);

    onNextScreen([&](Form& form) {
        enter(form, account::code, "43000001");
        person.fill(form, account::name, "Muebles Peñalba");
        failing->failAt(1);
        enter(form, account::linked, "57200000");
    });
    EXPECT_THROW(maes.jPlanCuentas(), ErrorBd);
    EXPECT_EQ(desktop.lastWords(), unsaved) << "a screen that an error closes, too";

    onNextScreen([&](Form& form) {
        enter(form, account::code, "43000001");
        person.fill(form, account::name, "Muebles Peñalba");
        failing->failAt(1, ErrorBd::Kind::Lost);
        person.answers = {Answer::Ok};
        enter(form, account::linked, "57200000");
        EXPECT_EQ(person.messages.back().text, "Fallo provocado");
        EXPECT_EQ(person.text(form, account::name), "Muebles Peñalba") << "a lost server leaves the screen as it is";
        person.answers = {Answer::Ok};
        person.press(form, account::save);
    });
    maes.jPlanCuentas();
    EXPECT_TRUE(stored("43000001").starts_with("Muebles Peñalba|")) << "and the next gesture connects again";
}

TEST_F(SubAccounts, ANewAccountKeepsItsLinksAndGivesItsNameToTheIdentityThatIsCreatedForIt) {
    onNextScreen([&](Form& form) {
        enter(form, account::code, "57200000");
        enter(form, account::code, "430,");
        person.fill(form, account::name, "Muebles Peñalba");
        onNextScreen([&](Form& record) {
            EXPECT_EQ(person.text(record, "txtFields(1)"), "Muebles Peñalba");
            pressAndRead(record, "cmdSalvar", "Grabación del nif realizada con éxito");
        });
        person.answers = {Answer::Yes};
        enter(form, account::document, "00000077A");
        person.hands.key(form, {key::Tab, shift::None});
        EXPECT_EQ(person.text(form, "Text1(5)"), "Muebles Peñalba ");
        onNextScreen([&](Form& record) {
            person.fill(record, "txtFields(1)", "Peñalba Hogar");
            pressAndRead(record, "cmdSalvar", "Grabación del nif realizada con éxito");
        });
        person.press(form, "cmdVerFicha");
        EXPECT_EQ(person.text(form, "Text1(5)"), "Peñalba Hogar ");

        enter(form, account::linked, "57200000");
        person.answers = {Answer::Ok};
        enter(form, "Text1(6)", "99999999");
        EXPECT_EQ(person.messages.back().text, "Código de cuenta no existe");
        person.fill(form, "Text1(6)", "");
        pressAndRead(form, account::save, done);
    });
    maes.jPlanCuentas();
    EXPECT_EQ(stored("43000002"), "Muebles Peñalba|1|3|0|0|57200000|" + std::to_string(bank) + "||0|0|\n");
}

TEST_F(SubAccounts, AHintNeverWaitsTwice) {
    onNextScreen([&](Form& form) {
        person.fill(form, account::code, "-572.0");
        EXPECT_EQ(person.text(form, account::code), "572,0") << "the point of the number keys";
        failing->failAt(1);
        person.hands.type(form, "00");
        EXPECT_EQ(failing->seen(), 1) << "a database that does not answer is asked once";
        failing->failAt(0);
        person.hands.key(form, {key::Tab, shift::None});
        EXPECT_EQ(person.text(form, account::name), "Caja");
    });
    maes.jPlanCuentas();
}

TEST_F(SubAccounts, WithoutDigitsOfItsCodesACompanyHasNone) {
    for (const Variant& digits : {Variant(-3), Variant(0), Variant(std::int64_t{1} << 62), Variant()}) {
        ParametrosEmpresa wrong = parameters(2026);
        wrong.set("Par_CtaNum", digits);
        SesionSql odd(failing, wrong);
        maes.MyBd = &odd;
        EXPECT_THROW(maes.jPlanCuentas(), std::runtime_error) << digits.text();
    }
}

TEST_F(SubAccounts, AFailureOfADeleteReachesTheHostAndDeletesNothing) {
    const std::string before = everything();
    onNextScreen([&](Form& form) {
        enter(form, account::code, "57200000");
        person.answers = {Answer::Yes, Answer::Yes};
        failing->failAt(1);
        person.press(form, account::remove);
    });
    EXPECT_THROW(maes.jPlanCuentas(), ErrorBd);
    EXPECT_EQ(everything(), before);
}

}  // namespace
}  // namespace FendaMaestros::testing
