#pragma once

#include "component/FendaMaes.h"
#include "session/ErrorBd.h"
#include "session/SesionSql.h"
#include "tests/support/Company.h"
#include "tests/support/DesktopTest.h"
#include "tests/support/EmptyCompany.h"
#include "tests/support/RivalConexion.h"

namespace FendaMaestros::testing {

/// A person at the screens of an empty company, any of whose statements can be made to fail.
class CompanyTest : public DesktopTest {
protected:
    explicit CompanyTest(int fiscalYear = 2026) : session(failing, parameters(fiscalYear)) {
        maes.MyBd = maes.MyBdorigen = &session;
    }

    /// Rows into "Table (Column, Column)".
    void insert(const std::string& into, const std::vector<std::vector<Variant>>& rows) {
        for (const auto& row : rows) {
            std::string marks = "?";
            for (std::size_t i = 1; i < row.size(); ++i) marks += ", ?";
            memory->run({"INSERT INTO " + into + " VALUES (" + marks + ")", row});
        }
    }
    /// All values of all rows of a read, "|" behind each value and a line each row.
    std::string rows(const std::string& sql) { return valuesOf(*memory->Execute(sql)); }
    std::int32_t id(const std::string& sql) {
        return static_cast<std::int32_t>(memory->Execute(sql)->cell(0, 0).integer());
    }
    /// The person goes to a field, types over it and leaves it.
    void enter(Form& form, const char* field, std::string_view typed) {
        person.fill(form, field, typed);
        person.hands.key(form, {key::Tab, shift::None});
    }
    void expectFocus(Form& form, const char* control) {
        ASSERT_NE(form.activeControl(), nullptr);
        EXPECT_EQ(form.activeControl()->Name, control);
    }
    /// Presses; then the last message is this one.
    void pressAndRead(Form& form, const char* button, const std::string& message, Answer answer = Answer::Ok) {
        person.answers = {answer};
        person.press(form, button);
        ASSERT_FALSE(person.messages.empty());
        EXPECT_EQ(person.messages.back().text, message);
    }

    std::shared_ptr<ConexionBd> memory = emptyCompany();
    std::shared_ptr<RivalConexion> failing = std::make_shared<RivalConexion>(memory);
    SesionSql session;
    FendaMaes maes{desktop, components};
};

}  // namespace FendaMaestros::testing
