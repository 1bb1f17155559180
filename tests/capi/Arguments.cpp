// What every function does with arguments that no host should hand over.
#include <cstring>
#include <fstream>
#include <functional>
#include <regex>
#include <set>

#include "tests/capi/Host.h"

namespace FendaMaestros::tests {
namespace {

void ignoreText(void*, const char*) {}
void ignoreControl(void*, const fenda_control*) {}

/// A call with one handle and one text; the rest of its arguments are good.
struct Call {
    const char* name;
    enum class Handle { None, Desktop, Session, Object, Form, Rows } handle = Handle::None;
    std::function<fenda_status(void* handle, const char* text)> make;
    /// It takes a text, which must not be null.
    bool takesText = false;
    /// The same, but null is "".
    bool nullIsNone = false;
    /// The same call with nowhere to put the result; empty when it has none, or does not need it.
    std::function<fenda_status(void* handle, const char* text)> placeless = {};
};

using H = Call::Handle;
template <class T>
T* as(void* handle) {
    return static_cast<T*>(handle);
}

std::int32_t number = 0;
std::int64_t large = 0;
std::int16_t small = 0;
bool flag = false;
fenda_value value;
char* text = nullptr;
fenda_session* madeSession = nullptr;
fenda_desktop* madeDesktop = nullptr;
fenda_object* madeObject = nullptr;
fenda_rows* madeRows = nullptr;

/// A copy that a function may write into.
char* buffer(const char* from) {
    static std::string copy;
    if (!from) return nullptr;
    copy = from;
    return copy.data();
}

#define ON(T, call)                              \
    [](void* h, const char* t) -> fenda_status { \
        (void)t;                                 \
        auto* const x = as<T>(h);                \
        (void)x;                                 \
        return call;                             \
    }
#define FREE(call)                             \
    [](void*, const char* t) -> fenda_status { \
        (void)t;                               \
        return call;                           \
    }

std::vector<Call> calls() {
    static const fenda_connection lent = [] {
        const auto fails = [](void*, const char*, fenda_rows*) { return FENDA_OTHER; };
        const auto ends = [](void*, std::int32_t) { return FENDA_OTHER; };
        const auto runs = [](void*, const char*, const fenda_value*, std::size_t, std::int64_t*) {
            return FENDA_OTHER;
        };
        return fenda_connection{sizeof(fenda_connection), nullptr, fails, runs, ends, ends, ends, nullptr};
    }();
    return {
        {"fenda_last_error", H::None, FREE(fenda_last_error(nullptr, nullptr, nullptr))},
        {"fenda_fail", H::None, FREE(fenda_fail(t, 0, nullptr)), true},
        {"fenda_folder_companies", H::None, FREE(fenda_folder_companies(t, ignoreText, nullptr)), true, false,
         FREE(fenda_folder_companies(t, nullptr, nullptr))},
        {"fenda_folder_create_demonstration", H::None, FREE(fenda_folder_create_demonstration(t, nullptr)), true},
        {"fenda_folder_create_company", H::None, FREE(fenda_folder_create_company(t, "x", 2026, 8, 28, 0)), true},
        {"fenda_session_open_folder", H::None, FREE(fenda_session_open_folder(t, nullptr, &madeSession)), true, false,
         FREE(fenda_session_open_folder(t, nullptr, nullptr))},
        {"fenda_session_open_server", H::None, FREE(fenda_session_open_server(t, nullptr, &madeSession)), true, false,
         FREE(fenda_session_open_server(t, nullptr, nullptr))},
        {"fenda_session_open_connection", H::None,
         FREE(fenda_session_open_connection(&lent, parameters.data(), parameters.size(), t, &madeSession)), true, true,
         FREE(fenda_session_open_connection(&lent, parameters.data(), parameters.size(), t, nullptr))},
        {"fenda_session_close", H::Session, ON(fenda_session, fenda_session_close(x))},
        {"fenda_session_read", H::Session, ON(fenda_session, fenda_session_read(x, t, &madeRows)), true, false,
         ON(fenda_session, fenda_session_read(x, t, nullptr))},
        {"fenda_rows_column", H::Rows, ON(fenda_rows, fenda_rows_column(x, t)), false},
        {"fenda_rows_null", H::Rows, ON(fenda_rows, fenda_rows_null(x))},
        {"fenda_rows_integer", H::Rows, ON(fenda_rows, fenda_rows_integer(x, 1))},
        {"fenda_rows_real", H::Rows, ON(fenda_rows, fenda_rows_real(x, 1.5))},
        {"fenda_rows_text", H::Rows, ON(fenda_rows, fenda_rows_text(x, "a", 1))},
        {"fenda_rows_size", H::Rows, ON(fenda_rows, fenda_rows_size(x, nullptr, nullptr))},
        {"fenda_rows_column_name", H::Rows, ON(fenda_rows, fenda_rows_column_name(x, 0, &text)), false, false,
         ON(fenda_rows, fenda_rows_column_name(x, 0, nullptr))},
        {"fenda_rows_value", H::Rows, ON(fenda_rows, fenda_rows_value(x, 0, 0, &value)), false, false,
         ON(fenda_rows, fenda_rows_value(x, 0, 0, nullptr))},
        {"fenda_rows_close", H::Rows, ON(fenda_rows, fenda_rows_close(x))},
        {"fenda_desktop_windows", H::None, {}, false, false, FREE(fenda_desktop_windows(nullptr))},
        {"fenda_desktop_script", H::None, FREE(fenda_desktop_script(t, false, &madeDesktop)), true, false,
         FREE(fenda_desktop_script(t, false, nullptr))},
        {"fenda_script_run", H::Desktop, ON(fenda_desktop, fenda_script_run(x, nullptr))},
        {"fenda_script_output", H::Desktop, ON(fenda_desktop, fenda_script_output(x, &text))},
        {"fenda_desktop_callbacks_open",
         H::None,
         {},
         false,
         false,
         FREE(fenda_desktop_callbacks_open(nullptr, &madeDesktop))},
        {"fenda_desktop_close", H::Desktop, ON(fenda_desktop, fenda_desktop_close(x))},
        {"fenda_form_name", H::Form, ON(fenda_form, fenda_form_name(x, &text)), false, false,
         ON(fenda_form, fenda_form_name(x, nullptr))},
        {"fenda_form_caption", H::Form, ON(fenda_form, fenda_form_caption(x, &text)), false, false,
         ON(fenda_form, fenda_form_caption(x, nullptr))},
        {"fenda_form_is_open", H::Form, ON(fenda_form, fenda_form_is_open(x, &flag)), false, false,
         ON(fenda_form, fenda_form_is_open(x, nullptr))},
        {"fenda_form_status", H::Form, ON(fenda_form, fenda_form_status(x, &text)), false, false,
         ON(fenda_form, fenda_form_status(x, nullptr))},
        {"fenda_form_controls", H::Form, ON(fenda_form, fenda_form_controls(x, ignoreControl, nullptr)), false, false,
         ON(fenda_form, fenda_form_controls(x, nullptr, nullptr))},
        {"fenda_form_text", H::Form, ON(fenda_form, fenda_form_text(x, t, &text)), true},
        {"fenda_form_table", H::Form, ON(fenda_form, fenda_form_table(x, t, &number, &number, &number)), true},
        {"fenda_form_cell", H::Form, ON(fenda_form, fenda_form_cell(x, t, 0, 0, &text)), true},
        {"fenda_form_items", H::Form, ON(fenda_form, fenda_form_items(x, t, ignoreText, nullptr)), true},
        {"fenda_form_type", H::Form, ON(fenda_form, fenda_form_type(x, t)), true},
        {"fenda_form_key", H::Form, ON(fenda_form, fenda_form_key(x, 0, 9))},
        {"fenda_form_click", H::Form, ON(fenda_form, fenda_form_click(x, t)), true},
        {"fenda_form_choose", H::Form, ON(fenda_form, fenda_form_choose(x, t, 0)), true},
        {"fenda_form_click_row", H::Form, ON(fenda_form, fenda_form_click_row(x, t, 0)), true},
        {"fenda_form_double_click_row", H::Form, ON(fenda_form, fenda_form_double_click_row(x, t, 0)), true},
        {"fenda_form_click_header", H::Form, ON(fenda_form, fenda_form_click_header(x, t, 0)), true},
        {"fenda_form_click_cell_button", H::Form, ON(fenda_form, fenda_form_click_cell_button(x, t, 0)), true},
        {"fenda_form_close", H::Form, ON(fenda_form, fenda_form_close(x))},
        {"fenda_object_new", H::Desktop, ON(fenda_desktop, fenda_object_new(x, nullptr, &madeObject)), false, false,
         ON(fenda_desktop, fenda_object_new(x, nullptr, nullptr))},
        {"fenda_object_close", H::Object, ON(fenda_object, fenda_object_close(x))},
        {"fenda_get_Cuenta", H::Object, ON(fenda_object, fenda_get_Cuenta(x, &text)), false, false,
         ON(fenda_object, fenda_get_Cuenta(x, nullptr))},
        {"fenda_set_Cuenta", H::Object, ON(fenda_object, fenda_set_Cuenta(x, t)), true},
        {"fenda_get_bFactu", H::Object, ON(fenda_object, fenda_get_bFactu(x, &flag)), false, false,
         ON(fenda_object, fenda_get_bFactu(x, nullptr))},
        {"fenda_set_bFactu", H::Object, ON(fenda_object, fenda_set_bFactu(x, true))},
        {"fenda_get_Plan", H::Object, ON(fenda_object, fenda_get_Plan(x, &small)), false, false,
         ON(fenda_object, fenda_get_Plan(x, nullptr))},
        {"fenda_set_Plan", H::Object, ON(fenda_object, fenda_set_Plan(x, 2008))},
        {"fenda_get_MyBdorigen", H::Object, ON(fenda_object, fenda_get_MyBdorigen(x, &madeSession)), false, false,
         ON(fenda_object, fenda_get_MyBdorigen(x, nullptr))},
        {"fenda_set_MyBdorigen", H::Object, ON(fenda_object, fenda_set_MyBdorigen(x, nullptr))},
        {"fenda_get_MyBd", H::Object, ON(fenda_object, fenda_get_MyBd(x, &madeSession)), false, false,
         ON(fenda_object, fenda_get_MyBd(x, nullptr))},
        {"fenda_set_MyBd", H::Object, ON(fenda_object, fenda_set_MyBd(x, nullptr))},
        {"fenda_jPaises", H::Object, ON(fenda_object, fenda_jPaises(x))},
        {"fenda_jConceptos", H::Object, ON(fenda_object, fenda_jConceptos(x))},
        {"fenda_jDepartamentos", H::Object, ON(fenda_object, fenda_jDepartamentos(x))},
        {"fenda_jCentros", H::Object, ON(fenda_object, fenda_jCentros(x))},
        {"fenda_jMasas", H::Object, ON(fenda_object, fenda_jMasas(x))},
        {"fenda_jPlanCuentas", H::Object, ON(fenda_object, fenda_jPlanCuentas(x, 0))},
        {"fenda_CrearNuevaCuenta", H::Object,
         ON(fenda_object, fenda_CrearNuevaCuenta(x, buffer(t), 1, 0, false, nullptr)), true},
        {"fenda_jshowInformePlandeCuentas", H::Object, ON(fenda_object, fenda_jshowInformePlandeCuentas(x))},
        {"fenda_jshowPGCMantenimiento", H::Object, ON(fenda_object, fenda_jshowPGCMantenimiento(x))},
        {"fenda_jshowPGCVerificacion", H::Object, ON(fenda_object, fenda_jshowPGCVerificacion(x))},
        {"fenda_msValidaCuentaPlan", H::Object, ON(fenda_object, fenda_msValidaCuentaPlan(x, t, 2026, false, &flag)),
         true, false, ON(fenda_object, fenda_msValidaCuentaPlan(x, t, 2026, false, nullptr))},
        {"fenda_fnBuscarCuentas", H::Object, ON(fenda_object, fenda_fnBuscarCuentas(x, 1, false, true, &number)), false,
         false, ON(fenda_object, fenda_fnBuscarCuentas(x, 1, false, true, nullptr))},
        {"fenda_fnBuscarConceptos", H::Object, ON(fenda_object, fenda_fnBuscarConceptos(x, 1, &number)), false, false,
         ON(fenda_object, fenda_fnBuscarConceptos(x, 1, nullptr))},
        {"fenda_jNif", H::Object, ON(fenda_object, fenda_jNif(x, t)), true, true},
        {"fenda_jCargaClavesRetencion", H::Object,
         ON(fenda_object, fenda_jCargaClavesRetencion(x, t, 2010, false, ignoreText, nullptr, nullptr)), true, false,
         ON(fenda_object, fenda_jCargaClavesRetencion(x, t, 2010, false, nullptr, nullptr, nullptr))},
        {"fenda_Calcula_letra_NIF", H::Object, ON(fenda_object, fenda_Calcula_letra_NIF(x, t, &text, nullptr)), true,
         false, ON(fenda_object, fenda_Calcula_letra_NIF(x, t, nullptr, nullptr))},
        {"fenda_FnBuscaPoblacion", H::Object, ON(fenda_object, fenda_FnBuscaPoblacion(x, t, "28001", &text)), true,
         false, ON(fenda_object, fenda_FnBuscaPoblacion(x, "011", "28001", nullptr))},
        {"fenda_FnVerificarCif", H::Object, ON(fenda_object, fenda_FnVerificarCif(x, buffer(t), false, &flag)), true,
         false, ON(fenda_object, fenda_FnVerificarCif(x, buffer(t), false, nullptr))},
        {"fenda_sql_for", H::None, FREE(fenda_sql_for(FENDA_SQLITE, t, &text)), true, false,
         FREE(fenda_sql_for(FENDA_SQLITE, t, nullptr))},
        {"fenda_schema_for", H::None, FREE(fenda_schema_for(FENDA_SQLITE, t, false, &text)), true, false,
         FREE(fenda_schema_for(FENDA_SQLITE, "main", false, nullptr))},
        {"fenda_compare_spanish", H::None, FREE(fenda_compare_spanish("a", t, &number)), true, false,
         FREE(fenda_compare_spanish("a", "b", nullptr))},
        {"fenda_spanish_like", H::None, FREE(fenda_spanish_like(t, "a", nullptr, &flag)), true, false,
         FREE(fenda_spanish_like("a", "a", nullptr, nullptr))},
        {"fenda_spanish_length", H::None, FREE(fenda_spanish_length(t, &large)), true, false,
         FREE(fenda_spanish_length("a", nullptr))},
        {"fenda_spanish_year", H::None, FREE(fenda_spanish_year(t, &number)), true, false,
         FREE(fenda_spanish_year("2026-01-01", nullptr))},
    };
}

class Arguments : public HostTest {
protected:
    /// Every call is made while a screen is shown, so that each kind of handle has a living one.
    template <class Work>
    void onAScreen(Work&& work) {
        int shown = 0;
        person.attends = [&](fenda_form* form) {
            ++shown;
            work(form);
            return FENDA_OK;
        };
        EXPECT_OK(fenda_jCentros(object));
        EXPECT_EQ(shown, 1);
    }
    void* living(H kind, fenda_form* form, fenda_rows* rows) const {
        switch (kind) {
            case H::Desktop:
                return desktop;
            case H::Session:
                return session;
            case H::Object:
                return object;
            case H::Form:
                return form;
            case H::Rows:
                return rows;
            case H::None:
                break;
        }
        return nullptr;
    }
};

TEST_F(Arguments, EveryFunctionIsTried) {
    std::ifstream header(FENDA_HEADER);
    const std::string all((std::istreambuf_iterator<char>(header)), {});
    std::set<std::string> declared, tried;
    const std::regex function("fenda_status (fenda_\\w+)\\(");
    for (std::sregex_iterator at(all.begin(), all.end(), function), end; at != end; ++at) declared.insert((*at)[1]);
    for (const Call& call : calls()) tried.insert(call.name);
    EXPECT_EQ(tried, declared);
}

TEST_F(Arguments, HandlesThatAreNoneAreRefused) {
    fenda_rows* closedRows = nullptr;
    ASSERT_OK(fenda_session_read(session, "SELECT 1 AS uno", &closedRows));
    ASSERT_OK(fenda_rows_close(closedRows));
    fenda_form* closedForm = nullptr;
    onAScreen([&](fenda_form* form) { closedForm = form; });
    onAScreen([&](fenda_form* form) {
        int here = 0;
        for (const Call& call : calls()) {
            if (call.handle == H::None) continue;
            SCOPED_TRACE(call.name);
            const auto status = [&](void* handle) { return call.make(handle, "x"); };
            void* const foreign = call.handle == H::Form ? static_cast<void*>(desktop) : static_cast<void*>(form);
            for (void* const none :
                 {static_cast<void*>(nullptr), static_cast<void*>(&here), reinterpret_cast<void*>(-1),
                  static_cast<void*>(closedRows), static_cast<void*>(closedForm), foreign})
                EXPECT_EQ(status(none), FENDA_BAD_HANDLE);
            EXPECT_NE(lastError(), "");
        }
    });
}

TEST_F(Arguments, TextsThatAreNoneAreRefused) {
    const std::string tooLong(FENDA_TEXT_LIMIT + 1, 'x');
    const std::vector<const char*> bad{tooLong.c_str(), "\xC3", "\xFF\xFE", "a\xED\xA0\x80z", "\xC0\xAF"};
    onAScreen([&](fenda_form* form) {
        fenda_rows* rows = nullptr;
        ASSERT_OK(fenda_session_read(session, "SELECT 1 AS uno", &rows));
        for (const Call& call : calls()) {
            SCOPED_TRACE(call.name);
            void* const handle = living(call.handle, form, rows);
            std::vector<const char*> wrong = call.takesText ? bad : std::vector<const char*>();
            if (call.takesText && !call.nullIsNone) wrong.push_back(nullptr);
            for (const char* none : wrong) EXPECT_EQ(call.make(handle, none), FENDA_BAD_ARGUMENT);
            if (call.placeless) {
                EXPECT_EQ(call.placeless(handle, "430"), FENDA_BAD_ARGUMENT);
            }
        }
        EXPECT_OK(fenda_rows_close(rows));
    });
}

TEST_F(Arguments, TheLongestTextIsTaken) {
    const std::string longest(FENDA_TEXT_LIMIT, 'x');
    EXPECT_OK(fenda_set_Cuenta(object, longest.c_str()));
    GivenText kept;
    EXPECT_OK(fenda_get_Cuenta(object, kept));
    EXPECT_EQ(kept.str(), longest);
    EXPECT_EQ(fenda_fail((longest + "x").c_str(), 0, nullptr), FENDA_BAD_ARGUMENT);
}

TEST_F(Arguments, TablesOfFunctionsAreLookedAt) {
    fenda_session* opened = nullptr;
    const auto open = [&](const fenda_connection* table, std::size_t count = parameters.size()) {
        return fenda_session_open_connection(table, parameters.data(), count, nullptr, &opened);
    };
    EXPECT_EQ(open(nullptr), FENDA_BAD_ARGUMENT);
    fenda_connection broken = connection;
    broken.size = 8;
    EXPECT_EQ(open(&broken), FENDA_BAD_ARGUMENT);
    broken = connection;
    broken.rollback = nullptr;
    EXPECT_EQ(open(&broken), FENDA_BAD_ARGUMENT);
    EXPECT_EQ(open(&connection, 1), FENDA_REFUSED) << "digits of a sub-account are missing";
    EXPECT_FALSE(released) << "a session that was not opened ends nothing";

    fenda_desktop_callbacks callbacks = person.callbacks();
    callbacks.answer = nullptr;
    EXPECT_EQ(fenda_desktop_callbacks_open(&callbacks, &madeDesktop), FENDA_BAD_ARGUMENT);
    fenda_components components{};
    EXPECT_EQ(fenda_object_new(desktop, &components, &madeObject), FENDA_BAD_ARGUMENT);
    EXPECT_EQ(fenda_sql_for(9, "SELECT 1", &text), FENDA_BAD_ARGUMENT);
}

TEST_F(Arguments, WhatIsNeededStaysOpen) {
    EXPECT_EQ(fenda_session_close(session), FENDA_IN_USE);
    EXPECT_EQ(fenda_desktop_close(desktop), FENDA_IN_USE);
    onAScreen([&](fenda_form*) {
        EXPECT_EQ(fenda_object_close(object), FENDA_IN_USE);
        EXPECT_EQ(fenda_set_MyBd(object, nullptr), FENDA_IN_USE);
        EXPECT_EQ(fenda_desktop_close(desktop), FENDA_IN_USE);
    });
    ASSERT_OK(fenda_set_MyBd(object, nullptr));
    EXPECT_EQ(fenda_session_close(session), FENDA_IN_USE) << "the second session still is";
    EXPECT_EQ(fenda_jCentros(object), FENDA_OTHER) << "without a session";
    EXPECT_NE(lastError().find("MyBd"), std::string::npos);
    fenda_session* found = session;
    EXPECT_OK(fenda_get_MyBd(object, &found));
    EXPECT_EQ(found, nullptr);
    EXPECT_OK(fenda_get_MyBdorigen(object, &found));
    EXPECT_EQ(found, session);
}

}  // namespace
}  // namespace FendaMaestros::tests
