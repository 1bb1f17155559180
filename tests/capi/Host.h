#pragma once

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "include/fenda.h"

extern "C" fenda_connection fenda_lent_company(bool* released);

/// A host of the shared library, as its tests are one.
namespace FendaMaestros::tests {

inline std::string lastError() {
    const char* text = nullptr;
    fenda_last_error(&text, nullptr, nullptr);
    return text;
}

/// A text that the library has given out.
struct GivenText {
    char* text = nullptr;

    ~GivenText() { fenda_free(text); }
    operator char**() { return &text; }
    std::string str() const { return text ? text : "(null)"; }
};

/// Fails with what the library says, unless the call went well.
#define EXPECT_OK(call) EXPECT_EQ(call, FENDA_OK) << lastError()
#define ASSERT_OK(call) ASSERT_EQ(call, FENDA_OK) << lastError()

inline constexpr std::array parameters{fenda_parameter{"Par_Ejercicio", "2026"}, fenda_parameter{"Par_CtaNum", "8"},
                                       fenda_parameter{"Par_Provincia", "28"}, fenda_parameter{"PAR_ORCONTANOM", "0"},
                                       fenda_parameter{"Par_Nombre", "Empresa de prueba"}};

/// A session on a connection that the host lends.
inline fenda_session* openOn(const fenda_connection& connection) {
    fenda_session* session = nullptr;
    EXPECT_OK(fenda_session_open_connection(&connection, parameters.data(), parameters.size(), nullptr, &session));
    return session;
}

/// A person at the screens, played by functions.
struct Person {
    std::function<fenda_status(fenda_form*)> attends = [](fenda_form*) { return FENDA_OK; };
    /// Agrees with everything.
    std::function<fenda_status(std::int32_t style, std::int32_t* button)> answers = [](std::int32_t style,
                                                                                       std::int32_t* button) {
        return *button = style & 4 ? FENDA_YES : FENDA_ACCEPT, FENDA_OK;
    };
    std::function<fenda_status(std::string& path)> saves = [](std::string&) { return FENDA_OK; };
    std::vector<std::string> messages;

    fenda_desktop_callbacks callbacks() {
        return {sizeof(fenda_desktop_callbacks),
                this,
                [](void* context, fenda_form* form) { return of(context).attends(form); },
                [](void* context, const char* text, const char*, int32_t style, int32_t* button) {
                    of(context).messages.emplace_back(text);
                    return of(context).answers(style, button);
                },
                [](void* context, const char* proposal, const char*, char* path) {
                    std::string chosen = proposal;
                    const fenda_status status = of(context).saves(chosen);
                    chosen.copy(path, FENDA_PATH_SIZE - 1);
                    return status;
                },
                nullptr,
                nullptr};
    }
    static Person& of(void* context) { return *static_cast<Person*>(context); }
};

/// An object on a desktop of callbacks and a lent company; all is closed at the end.
class HostTest : public ::testing::Test {
protected:
    void SetUp() override {
        const fenda_desktop_callbacks callbacks = person.callbacks();
        ASSERT_OK(fenda_desktop_callbacks_open(&callbacks, &desktop));
        session = openOn(connection);
        ASSERT_OK(fenda_object_new(desktop, nullptr, &object));
        ASSERT_OK(fenda_set_MyBd(object, session));
        ASSERT_OK(fenda_set_MyBdorigen(object, session));
    }
    void TearDown() override {
        EXPECT_OK(fenda_object_close(object));
        EXPECT_OK(fenda_session_close(session));
        EXPECT_OK(fenda_desktop_close(desktop));
        EXPECT_TRUE(released);
    }

    std::string textOf(fenda_form* form, const char* control) {
        GivenText text;
        EXPECT_OK(fenda_form_text(form, control, text));
        return text.str();
    }
    /// The first value of a read; "(none)" for no row.
    std::string value(const char* sql) {
        fenda_rows* rows = nullptr;
        EXPECT_OK(fenda_session_read(session, sql, &rows));
        fenda_value cell{};
        std::string found = "(none)";
        if (fenda_rows_value(rows, 0, 0, &cell) == FENDA_OK)
            found = cell.type == FENDA_INTEGER ? std::to_string(cell.integer) : std::string(cell.text, cell.length);
        EXPECT_OK(fenda_rows_close(rows));
        return found;
    }

    bool released = false;
    /// What the session stands on; tests may put other callbacks into it before SetUp().
    fenda_connection connection = fenda_lent_company(&released);
    Person person;
    fenda_desktop* desktop = nullptr;
    fenda_session* session = nullptr;
    fenda_object* object = nullptr;
};

}  // namespace FendaMaestros::tests
