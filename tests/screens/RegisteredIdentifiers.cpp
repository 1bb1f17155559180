#include <gtest/gtest.h>

#include "component/FendaMaes.h"
#include "session/SesionSql.h"
#include "tests/support/FakeConexion.h"
#include "tests/support/ScriptedPerson.h"

namespace FendaMaestros {

namespace {

class RegisteredIdentifier : public ::testing::Test {
protected:
    testing::ScriptedPerson person_;
    HeadlessDesktop desktop_{person_};
    ComponentRegistry components_;
    FendaMaes component_{desktop_, components_};
    std::shared_ptr<testing::FakeConexion> register_ = std::make_shared<testing::FakeConexion>();
    SesionSql session_{register_, {}};

    RegisteredIdentifier() {
        component_.MyBd = &session_;
        register_->rows = std::make_shared<Recordset>(std::vector<std::string>{"Nif_Id", "NIF_TIPDOC"});
    }

    void registerAs(int documentType) {
        register_->rows->appendInteger(1);
        register_->rows->appendInteger(documentType);
    }

    struct Verdict {
        bool valid;
        std::string value;
    };

    Verdict verify(std::string value) {
        const bool valid = component_.FnVerificarCif(value, true);
        return {valid, value};
    }
};

TEST_F(RegisteredIdentifier, AsNieIsAcceptedAsItStandsInCapitals) {
    registerAs(2);
    const Verdict verdict = verify("x-1234567ñ");
    EXPECT_TRUE(verdict.valid);
    EXPECT_EQ(verdict.value, "X-1234567Ñ");
    EXPECT_EQ(register_->log, std::vector<std::string>{"SELECT * FROM KXComun.dbo.Nif WHERE Nif_Doc = 'X-1234567Ñ'"});
}

TEST_F(RegisteredIdentifier, AsAnythingElseIsCheckedAsUsual) {
    for (const int documentType : {0, 1, 3}) {
        register_->rows = std::make_shared<Recordset>(std::vector<std::string>{"Nif_Id", "Nif_TipDoc"});
        registerAs(documentType);
        EXPECT_FALSE(verify("x1234567a").valid) << documentType;
        EXPECT_TRUE(verify("12.345.678-z").valid) << documentType;
    }
}

TEST_F(RegisteredIdentifier, NotFoundIsCheckedAsUsual) {
    const Verdict verdict = verify("es-a12345674");
    EXPECT_TRUE(verdict.valid);
    EXPECT_EQ(verdict.value, "A12345674");
}

TEST_F(RegisteredIdentifier, WithoutTheRegisterNothingIsRead) {
    component_.MyBd = nullptr;
    std::string value = "12345678z";
    EXPECT_TRUE(component_.FnVerificarCif(value));
    EXPECT_THROW(component_.FnVerificarCif(value, true), std::logic_error);
}

}  // namespace

}  // namespace FendaMaestros
