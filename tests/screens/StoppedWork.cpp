#include "tests/support/CompanyTest.h"

namespace FendaMaestros::testing {
namespace {

/// A connection each of whose watched reads takes a second, and is then stopped, if somebody wants to.
class SlowConexion final : public FailingConexion {
public:
    SlowConexion(std::shared_ptr<ConexionBd> connection, Desktop& desktop)
        : FailingConexion(std::move(connection)), desktop_(desktop) {}

    void watchReads(ReadWatch watch) override { watch_ = std::move(watch); }
    std::shared_ptr<Recordset> Execute(std::string_view sql) override {
        auto rows = FailingConexion::Execute(sql);
        if (!watch_) return rows;
        desktop_.letPass(std::chrono::seconds(1));
        rows->Partial = !watch_(rows->rowCount());
        return rows;
    }

private:
    Desktop& desktop_;
    ReadWatch watch_;
};

/// A person who stops all long work at once; two accounts, one of them wrong.
class StoppedWork : public CompanyTest {
protected:
    StoppedWork() {
        maes.MyBd = &slowSession;
        person.impatient = true;
        insert("PCta (PCta_Cta, PCta_Des, PCta_Subcuenta, PCta_bActiva)",
               {{"43000001", "Cliente", 1, 1}, {"570", "Caja", 1, 1}});
    }
    static std::string status(Form& form) { return ScriptedPerson::control<Label>(form, "lblEstado").Caption; }

    SesionSql slowSession{std::make_shared<SlowConexion>(memory, desktop), parameters(2026)};
};

TEST_F(StoppedWork, AListingHoldsWhatWasReadAndSaysThatItIsNotComplete) {
    onNextScreen([&](Form& form) {
        person.press(form, "Check1");
        person.press(form, "cmdIniciar");
        EXPECT_EQ(status(form), "2 cuentas hasta aquí: el listado no está completo");
        EXPECT_EQ(ScriptedPerson::control<Label>(form, "lblAcu(2)").Caption, "Total... sin calcular");
        EXPECT_FALSE(ScriptedPerson::control(form, "barProgreso").Visible);
        person.impatient = false;
        person.press(form, "cmdIniciar");
        EXPECT_EQ(status(form), "2 cuentas");
        EXPECT_EQ(ScriptedPerson::control<Label>(form, "lblAcu(2)").Caption, "Total... 0,00");
    });
    maes.jshowInformePlandeCuentas();
}

TEST_F(StoppedWork, ACheckSaysThatItIsNotCompleteAndNothingIsDeleted) {
    onNextScreen([&](Form& form) {
        const auto& list = ScriptedPerson::control<ListView>(form, "ListView1");
        person.press(form, "cmdInicio");
        EXPECT_EQ(status(form), "0 cuentas fuera del plan hasta aquí: la verificación no está completa");
        EXPECT_EQ(list.Rows.size(), 0U) << "a look-up that was stopped has found nothing out";
        person.hands.choose(form, ScriptedPerson::control<ComboBox>(form, "cboPlan"), 1);
        person.press(form, "cmdInicio");
        EXPECT_EQ(status(form), "1 cuenta errónea hasta aquí: la verificación no está completa");
        EXPECT_EQ(list.Rows.size(), 1U);
        person.impatient = false;
        person.hands.choose(form, ScriptedPerson::control<ComboBox>(form, "cboPlan"), 0);
        person.press(form, "cmdInicio");
        EXPECT_EQ(status(form), "2 cuentas fuera del plan");
    });
    maes.jshowPGCVerificacion();
    EXPECT_TRUE(person.messages.empty());
}

TEST_F(StoppedWork, TheRegisterHoldsWhatWasRead) {
    insert("KXComun.dbo.Nif (Nif_Doc, Nif_Nom)", {{"1", "Ana"}});
    onNextScreen([&](Form& form) {
        onNextScreen([&](Form& listing) {
            person.press(listing, "cmdIniciar");
            EXPECT_EQ(status(listing), "1 identidad hasta aquí: el listado no está completo");
        });
        person.press(form, "cmdInforme");
    });
    maes.jNif();
}

}  // namespace
}  // namespace FendaMaestros::testing
