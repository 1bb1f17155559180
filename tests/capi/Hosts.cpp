// What a host does with the library, and what its callbacks may do.
#include <stdexcept>
#include <thread>
#include <tuple>

#include "tests/capi/Host.h"

namespace FendaMaestros::tests {
namespace {

fenda_status key(fenda_form* form, int code) { return fenda_form_key(form, code, 0); }

constexpr int enter = 13, escape = 27;

// --- screens that a host attends

using Screens = HostTest;

TEST_F(Screens, AreFilledInBySomebodyWhoSeesThem) {
    std::string fields;
    person.attends = [&](fenda_form* form) {
        GivenText name, caption, heading, cell, told;
        EXPECT_OK(fenda_form_name(form, name));
        EXPECT_EQ(name.str(), "frmCentros");
        EXPECT_OK(fenda_form_caption(form, caption));
        EXPECT_EQ(caption.str(), "Fichero maestro de Centros de trabajo");
        EXPECT_OK(fenda_form_click(form, "cmdNueva"));
        for (const char* typed : {"7", "Almacén de Lugo"}) {
            EXPECT_OK(fenda_form_type(form, typed));
            EXPECT_OK(key(form, enter));
        }
        EXPECT_EQ(textOf(form, "text1(1)"), "Almacén de Lugo");
        EXPECT_OK(fenda_form_controls(
            form,
            [](void* context, const fenda_control* control) {
                if (control->kind == FENDA_TEXT_BOX || control->focused)
                    *static_cast<std::string*>(context) += std::string(control->name) + "=" + control->text + ";";
            },
            &fields));
        EXPECT_OK(fenda_form_click(form, "cmdGuardar"));
        std::int32_t rows = 0, columns = 0, current = 0;
        EXPECT_OK(fenda_form_table(form, "DataGrid1", &rows, &columns, &current));
        EXPECT_EQ(std::tuple(rows, columns, current), std::tuple(1, 3, 0));
        EXPECT_OK(fenda_form_cell(form, "DataGrid1", -1, 2, heading));
        EXPECT_EQ(heading.str(), "Descripción ");
        EXPECT_OK(fenda_form_cell(form, "DataGrid1", 0, 2, cell));
        EXPECT_EQ(cell.str(), "Almacén de Lugo");
        EXPECT_EQ(fenda_form_cell(form, "DataGrid1", 1, 2, cell), FENDA_BAD_ARGUMENT);
        EXPECT_EQ(fenda_form_cell(form, "DataGrid1", 0, 3, cell), FENDA_BAD_ARGUMENT);
        EXPECT_EQ(fenda_form_click_row(form, "DataGrid1", 1), FENDA_BAD_ARGUMENT);
        EXPECT_EQ(fenda_form_click_row(form, "cmdSalir", 0), FENDA_BAD_ARGUMENT);
        EXPECT_EQ(fenda_form_click(form, "cmdNada"), FENDA_BAD_ARGUMENT);
        EXPECT_OK(fenda_form_status(form, told));
        EXPECT_NE(told.str(), "");
        return key(form, escape);
    };
    ASSERT_OK(fenda_jCentros(object));
    EXPECT_EQ(fields, "Text1(0)=7;Text1(1)=Almacén de Lugo;cmdGuardar=&Guardar ;");
    EXPECT_EQ(value("SELECT Centro_Des FROM Centro WHERE Centro_Cod = 7"), "Almacén de Lugo");
}

TEST_F(Screens, ExportWithWhatTheHostBrings) {
    struct Host {
        std::string title, rows;
        bool ended = false;
    } host;
    fenda_components components{};
    components.size = sizeof components;
    components.context = &host;
    components.grid_to_excel = [](void* context, const char* title, fenda_rows* rows) {
        Host& to = *static_cast<Host*>(context);
        to.title = title;
        std::int32_t count = 0, columns = 0;
        EXPECT_OK(fenda_rows_size(rows, &count, &columns));
        EXPECT_EQ(fenda_rows_close(rows), FENDA_IN_USE);
        for (int row = 0; row < count; ++row)
            for (int column = 0; column < columns; ++column) {
                GivenText name;
                fenda_value cell{};
                EXPECT_OK(fenda_rows_column_name(rows, column, name));
                EXPECT_OK(fenda_rows_value(rows, row, column, &cell));
                to.rows +=
                    name.str() + "=" + (cell.type == FENDA_TEXT ? cell.text : std::to_string(cell.integer)) + ";";
            }
        fenda_fail("Disco extraíble.", 0, nullptr);
        return FENDA_FULL;
    };
    components.release = [](void* context) { static_cast<Host*>(context)->ended = true; };
    fenda_object* own = nullptr;
    ASSERT_OK(fenda_object_new(desktop, &components, &own));
    ASSERT_OK(fenda_set_MyBd(own, session));
    person.attends = [&](fenda_form* form) {
        EXPECT_OK(fenda_form_click(form, "cmdNueva"));
        EXPECT_OK(fenda_form_type(form, "9"));
        EXPECT_OK(key(form, enter));
        EXPECT_OK(fenda_form_type(form, "Tienda"));
        EXPECT_OK(fenda_form_click(form, "cmdGuardar"));
        EXPECT_EQ(fenda_form_click(form, "cmdExcel"), FENDA_CALLBACK);
        EXPECT_EQ(fenda_form_type(form, "x"), FENDA_CALLBACK) << "the screen has failed";
        return FENDA_OK;
    };
    EXPECT_EQ(fenda_jCentros(own), FENDA_CALLBACK);
    EXPECT_EQ(lastError(), "Disco extraíble.");
    EXPECT_EQ(host.rows, "Código=9;Descripción=Tienda;");
    EXPECT_OK(fenda_object_close(own));
    EXPECT_TRUE(host.ended);
}

// --- connections

class Connections : public HostTest {
protected:
    /// The lent callbacks, behind those of a test.
    static inline fenda_connection lent{};
    static inline std::function<fenda_status(const char* sql, fenda_rows* rows)> executes;

    void SetUp() override {
        lent = connection;
        executes = [](const char* sql, fenda_rows* rows) { return lent.execute(lent.context, sql, rows); };
        connection.execute = [](void*, const char* sql, fenda_rows* rows) { return executes(sql, rows); };
        HostTest::SetUp();
    }
    fenda_status read(const char* sql = "SELECT Centro_Id FROM Centro") {
        fenda_rows* rows = nullptr;
        const fenda_status status = fenda_session_read(session, sql, &rows);
        if (status == FENDA_OK) {
            EXPECT_OK(fenda_rows_close(rows));
        }
        return status;
    }
};

TEST_F(Connections, ThatRaiseOrBreakARuleFailAndHarmNothing) {
    executes = [](const char*, fenda_rows*) -> fenda_status { throw std::runtime_error("roto"); };
    EXPECT_EQ(read(), FENDA_CALLBACK);
    const char* native = nullptr;
    EXPECT_OK(fenda_last_error(nullptr, nullptr, &native));
    EXPECT_STREQ(native, "roto");
    executes = [](const char*, fenda_rows*) -> fenda_status { throw 7; };
    EXPECT_EQ(read(), FENDA_CALLBACK);

    using Fill = std::function<void(fenda_rows*)>;
    const std::pair<const char*, Fill> broken[] = {
        {"no columns", [](fenda_rows*) {}},
        {"cells without columns", [](fenda_rows* rows) { EXPECT_EQ(fenda_rows_null(rows), FENDA_BAD_ARGUMENT); }},
        {"a row that is not whole",
         [](fenda_rows* rows) {
             EXPECT_OK(fenda_rows_column(rows, "a"));
             EXPECT_OK(fenda_rows_column(rows, "b"));
             EXPECT_OK(fenda_rows_integer(rows, 1));
         }},
        {"a column behind cells",
         [](fenda_rows* rows) {
             EXPECT_OK(fenda_rows_column(rows, "a"));
             EXPECT_OK(fenda_rows_null(rows));
             EXPECT_EQ(fenda_rows_column(rows, "b"), FENDA_BAD_ARGUMENT);
         }},
        {"a text that is none",
         [](fenda_rows* rows) {
             EXPECT_OK(fenda_rows_column(rows, "a"));
             EXPECT_EQ(fenda_rows_text(rows, "a\xFFz", 3), FENDA_BAD_ARGUMENT);
         }},
        {"a text with a zero",
         [](fenda_rows* rows) {
             EXPECT_OK(fenda_rows_column(rows, "a"));
             EXPECT_EQ(fenda_rows_text(rows, "a\0z", 3), FENDA_BAD_ARGUMENT);
         }},
    };
    for (const auto& [what, fill] : broken) {
        executes = [&fill = fill](const char*, fenda_rows* rows) {
            fill(rows);
            return FENDA_OK;
        };
        EXPECT_EQ(read(), FENDA_CALLBACK) << what;
    }
    executes = [](const char*, fenda_rows* rows) {
        EXPECT_OK(fenda_rows_column(rows, "n"));
        EXPECT_OK(fenda_rows_text(rows, "ñ", 2));
        EXPECT_EQ(fenda_rows_size(rows, nullptr, nullptr), FENDA_NESTED) << "not whole yet";
        EXPECT_EQ(fenda_rows_close(rows), FENDA_NESTED);
        return FENDA_OK;
    };
    EXPECT_EQ(value("SELECT 1 AS n"), "ñ");
}

TEST_F(Connections, TellKindCodeAndWords) {
    executes = [](const char*, fenda_rows*) {
        fenda_fail("La tabla está ocupada.", 1205, "deadlock victim");
        return FENDA_BUSY;
    };
    EXPECT_EQ(read(), FENDA_BUSY);
    const char *text = nullptr, *native = nullptr;
    std::int32_t code = 0;
    EXPECT_OK(fenda_last_error(&text, &code, &native));
    EXPECT_STREQ(text, "La tabla está ocupada.");
    EXPECT_EQ(code, 1205);
    EXPECT_STREQ(native, "deadlock victim");

    executes = [](const char*, fenda_rows*) { return FENDA_LOST; };
    EXPECT_EQ(read(), FENDA_LOST);
    EXPECT_NE(lastError(), "La tabla está ocupada.") << "what was told is told once";
    executes = [](const char*, fenda_rows*) { return static_cast<fenda_status>(99); };
    EXPECT_EQ(read(), FENDA_CALLBACK);
}

TEST_F(Connections, AreAskedReadsAlone) {
    int asked = 0;
    executes = [&](const char*, fenda_rows*) { return ++asked, FENDA_OTHER; };
    for (const char* hostile : {"DELETE FROM Centro", "SELECT 1; DELETE FROM Centro", "SELECT 1 -- x", "",
                                "WITH a AS (SELECT 1) DELETE FROM Centro", "SELECT * INTO x FROM Centro",
                                "SELECT pg_sleep(9)", "SELECT 1 + 2"})
        EXPECT_EQ(read(hostile), FENDA_REFUSED) << hostile;
    EXPECT_EQ(asked, 0);
}

TEST_F(Connections, CannotCallTheLibraryMeanwhile) {
    std::vector<fenda_status> statuses;
    executes = [&](const char* sql, fenda_rows* rows) {
        fenda_session* opened = nullptr;
        bool valid = false;
        char identifier[] = "12345678Z";
        const fenda_connection again = lent;
        statuses = {fenda_session_close(session), fenda_FnVerificarCif(object, identifier, false, &valid),
                    fenda_jCentros(object), read(),
                    fenda_session_open_connection(&again, parameters.data(), parameters.size(), nullptr, &opened)};
        return lent.execute(lent.context, sql, rows);
    };
    EXPECT_EQ(value("SELECT COUNT(*) FROM Centro"), "0");
    EXPECT_EQ(statuses, std::vector<fenda_status>(5, FENDA_NESTED));
}

TEST_F(Connections, ThatFailInAScreenAreToldToThePersonOrTheHost) {
    person.attends = [&](fenda_form* form) { return fenda_form_close(form); };
    executes = [](const char*, fenda_rows*) {
        fenda_fail("Sin línea.", 0, nullptr);
        return FENDA_OTHER;
    };
    EXPECT_EQ(fenda_jCentros(object), FENDA_OTHER);
    EXPECT_EQ(lastError(), "Sin línea.");
}

// --- the person

using People = HostTest;

TEST_F(People, ThatRaiseOrFailEndTheScreens) {
    int attended = 0;
    person.attends = [&](fenda_form*) -> fenda_status {
        if (++attended == 1) throw std::runtime_error("sin manos");
        fenda_fail("No sé hacerlo.", 3, "manos");
        return FENDA_OTHER;
    };
    EXPECT_EQ(fenda_jCentros(object), FENDA_CALLBACK);
    EXPECT_EQ(fenda_jConceptos(object), FENDA_CALLBACK);
    EXPECT_EQ(lastError(), "No sé hacerlo.");
    EXPECT_EQ(attended, 2);
    person.attends = [](fenda_form* form) { return fenda_form_close(form); };
    EXPECT_OK(fenda_jPaises(object)) << "what has failed before is over";
}

TEST_F(People, AnswerWithAButtonThatIsThere) {
    bool valid = true;
    person.answers = [](std::int32_t, std::int32_t* button) {
        EXPECT_EQ(*button, 0);
        *button = FENDA_YES;
        return FENDA_OK;
    };
    EXPECT_OK(fenda_msValidaCuentaPlan(object, "99900000", 2026, true, &valid));
    EXPECT_TRUE(valid);
    person.answers = [](std::int32_t, std::int32_t*) { return FENDA_OK; };
    EXPECT_OK(fenda_msValidaCuentaPlan(object, "99900000", 2026, true, &valid));
    EXPECT_FALSE(valid) << "Esc says no";
    EXPECT_EQ(person.messages.size(), 2u);
    valid = true;
    person.answers = [](std::int32_t, std::int32_t* button) { return *button = FENDA_ACCEPT, FENDA_OK; };
    EXPECT_EQ(fenda_msValidaCuentaPlan(object, "99900000", 2026, true, &valid), FENDA_CALLBACK);
    EXPECT_TRUE(valid) << "results are left alone";
}

TEST_F(People, OpenFurtherScreensAndObjectsWhileOneIsShown) {
    fenda_object* other = nullptr;
    fenda_form* outer = nullptr;
    std::vector<std::string> names;
    person.attends = [&](fenda_form* form) {
        GivenText name;
        EXPECT_OK(fenda_form_name(form, name));
        names.push_back(name.str());
        if (outer) return FENDA_OK;
        outer = form;
        EXPECT_OK(fenda_object_new(desktop, nullptr, &other));
        EXPECT_EQ(fenda_jPaises(other), FENDA_OTHER) << "it has no session";
        EXPECT_OK(fenda_jDepartamentos(object)) << "this one still has";
        bool open = false;
        EXPECT_OK(fenda_form_is_open(form, &open));
        EXPECT_TRUE(open);
        EXPECT_OK(key(form, escape));
        EXPECT_OK(fenda_form_is_open(form, &open));
        EXPECT_FALSE(open);
        return fenda_object_close(other);
    };
    EXPECT_OK(fenda_jCentros(object));
    EXPECT_EQ(names, (std::vector<std::string>{"frmCentros", "frmDepartamentos"}));
    EXPECT_EQ(fenda_form_type(outer, "x"), FENDA_BAD_HANDLE);
}

// --- threads

using Threads = HostTest;

TEST_F(Threads, OthersAreTurnedAway) {
    std::vector<fenda_status> statuses;
    std::string told;
    std::int32_t order = 0;
    std::thread([&] {
        bool valid = false;
        char identifier[] = "12345678Z";
        fenda_desktop* opened = nullptr;
        statuses = {fenda_jCentros(object), fenda_FnVerificarCif(object, identifier, false, &valid),
                    fenda_session_close(session), fenda_object_close(object), fenda_desktop_script("", false, &opened)};
        told = lastError();
        EXPECT_OK(fenda_compare_spanish("ñ", "N", &order)) << "needs no handle";
    }).join();
    EXPECT_EQ(statuses, std::vector<fenda_status>(5, FENDA_WRONG_THREAD));
    EXPECT_NE(told.find("hilo"), std::string::npos);
    EXPECT_GT(order, 0);
    EXPECT_NE(lastError(), told) << "errors are of a thread";
}

TEST(ThreadsInTurn, ADifferentOneBeginsWhenAllIsClosed) {
    const auto work = [] {
        fenda_desktop* opened = nullptr;
        EXPECT_OK(fenda_desktop_script("", false, &opened));
        EXPECT_OK(fenda_desktop_close(opened));
        EXPECT_EQ(fenda_desktop_close(opened), FENDA_BAD_HANDLE);
    };
    work();
    std::thread(work).join();
    work();
}

// --- scripts

using Scripts = HostTest;

TEST_F(Scripts, FailWithTheirLine) {
    fenda_desktop* scripted = nullptr;
    EXPECT_EQ(fenda_desktop_script("nota bien\nbailar\n", false, &scripted), FENDA_SCRIPT);
    EXPECT_EQ(lastError().rfind("línea 1: ", 0), 0u) << lastError();
    ASSERT_OK(fenda_desktop_script("mostrar\npulsar cmdNada\n", false, &scripted));
    fenda_object* on = nullptr;
    ASSERT_OK(fenda_object_new(scripted, nullptr, &on));
    ASSERT_OK(fenda_set_MyBd(on, session));
    EXPECT_EQ(fenda_jCentros(on), FENDA_SCRIPT);
    EXPECT_EQ(lastError().rfind("línea 2: ", 0), 0u) << lastError();
    EXPECT_EQ(fenda_jPaises(on), FENDA_SCRIPT) << "and so does all that follows";
    GivenText output;
    EXPECT_OK(fenda_script_output(scripted, output));
    EXPECT_NE(output.str().find("frmCentros"), std::string::npos);
    EXPECT_EQ(fenda_script_output(desktop, output), FENDA_BAD_ARGUMENT) << "no script works there";
    EXPECT_OK(fenda_object_close(on));
    EXPECT_OK(fenda_desktop_close(scripted));
}

TEST_F(Scripts, CallOperationsOfTheObjectButOpenNoCompanies) {
    fenda_desktop* scripted = nullptr;
    ASSERT_OK(
        fenda_desktop_script("abrir FnVerificarCif 12.345.678-z\n"
                             "comprobar resultado sí\n"
                             "propiedad Plan = 2008\n"
                             "esperar error \"de la aplicación\"\n"
                             "empresa abrir \"Otra\"\n",
                             false, &scripted))
        << lastError();
    fenda_object* on = nullptr;
    ASSERT_OK(fenda_object_new(scripted, nullptr, &on));
    EXPECT_OK(fenda_script_run(scripted, on));
    std::int16_t plan = 0;
    EXPECT_OK(fenda_get_Plan(on, &plan));
    EXPECT_EQ(plan, 2008);
    EXPECT_EQ(fenda_script_run(scripted, object), FENDA_BAD_ARGUMENT) << "it is on another desktop";
    EXPECT_OK(fenda_object_close(on));
    EXPECT_OK(fenda_desktop_close(scripted));
}

}  // namespace
}  // namespace FendaMaestros::tests
