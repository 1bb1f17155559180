#include <gtest/gtest.h>

#include <sstream>

#include "app/Composition.h"
#include "app/guion/GuionOperator.h"
#include "app/guion/GuionParser.h"
#include "app/guion/GuionProgram.h"
#include "session/frmBuscar.h"

namespace FendaMaestros {
namespace {

/// Asks, fails and opens another of its kind, as screens do.
class frmToy final : public Form {
public:
    using Form::Form;
    std::string chosen;

protected:
    void onLoad() override {
        add(Text1, "Text1(0)");
        add(cmdPreguntar, "cmdPreguntar");
        add(cmdFallar, "cmdFallar");
        add(cmdOtra, "cmdOtra");
        add(cmdBuscar, "cmdBuscar");
        add(cmdFichero, "cmdFichero");
        cmdPreguntar.Click = [this] { question(); };
        cmdFallar.Click = [] { throw std::runtime_error("No queda sitio."); };
        cmdOtra.Click = [this] {
            frmToy(desktop()).show();
            ask("De vuelta", message::Exclamation, "");
        };
        cmdBuscar.Click = [this] { search(); };
        cmdFichero.Click = [this] { Text1.Text = desktop().chooseSaveFile("lista.pdf", "PDF").value_or("nada"); };
    }
    void onKeyUp(int& code, int) override { Caption = std::to_string(code); }

private:
    void question() {
        try {
            chosen = ask("¿Sí\r\no \"no\"?", 292, "Título") == Answer::Yes ? "sí" : "no";
        } catch (const std::exception& error) {
            ask(error.what(), message::Ok, "");
        }
    }
    void search() {
        auto rows = std::make_shared<Recordset>(std::vector<std::string>{"id", "Codigo", "Nombre"});
        int id = 0;
        for (const char* name : {"Álava", "Badajoz", "Cádiz", "Málaga"}) {
            rows->appendInteger(++id);
            rows->appendText(std::to_string(id));
            rows->appendText(name);
        }
        frmBuscar dialog(AyudaCampos(desktop()), rows, "Nombre", {{{"Código", 900}, {"Nombre", 3000}}});
        dialog.show();
        Text1.Text = dialog.result().substr(0, 1);
    }

    TextBox Text1;
    CommandButton cmdPreguntar{"&Preguntar"}, cmdFallar{"Fallar"}, cmdOtra{"Otra"}, cmdBuscar, cmdFichero;
};

struct Session {
    std::string printed;
    /// "line: reason", empty when the script ran to its end.
    std::string failure;
};

using Desktops = GuionDesktop (*)(Operator&);

Session runOn(Desktops desktop, const std::string& script) {
    Session result;
    std::ostringstream printed;
    try {
        std::istringstream lines(script);
        std::vector<Command> commands = parseGuion(lines);
        std::optional<GuionProgram> program;
        commands.insert(commands.begin(),
                        {.acts = true, .run = [&](GuionOperator& person) {
                             person.betweenScreens([&](GuionHost& host) { frmToy(host.desktop()).show(); });
                         }});
        GuionOperator person(std::move(commands), printed);
        program.emplace(
            desktop(person), [](std::string_view) {}, std::nullopt);
        person.run(*program);
    } catch (const GuionError& error) {
        result.failure = std::to_string(error.line) + ": " + error.reason;
    }
    result.printed = printed.str();
    return result;
}

/// Runs a script with a toy screen open, on every desktop that was built; all do the same.
Session run(const std::string& script) {
    Session result = runOn(headlessDesktop, script);
#ifdef FENDA_WITH_QT
    const Session onWindows = runOn(windowDesktop, script);
    EXPECT_EQ(onWindows.printed, result.printed);
    EXPECT_EQ(onWindows.failure, result.failure);
#endif
    return result;
}

struct Case {
    const char* name;
    const char* script;
    const char* failure;
};

class ScriptFailures : public testing::TestWithParam<Case> {};

TEST_P(ScriptFailures, sayWhereAndWhy) { EXPECT_EQ(run(GetParam().script).failure, GetParam().failure); }

INSTANTIATE_TEST_SUITE_P(
    Syntax, ScriptFailures,
    testing::Values(Case{"unknownCommand", "mostrar\n\n  saltar # alto\n", "3: no hay ninguna orden \"saltar\""},
                    Case{"wholeScriptFirst", "pulsar cmdFallar\npulsar\n", "2: falta el nombre del control"},
                    Case{"openQuotes", "escribir \"a\"\"b\n", "1: faltan las comillas que cierran el texto"},
                    Case{"unknownEscape", "escribir \"c:\\dir\"\n",
                         "1: \\d no significa nada; una barra invertida se escribe \\\\"},
                    Case{"codePoint", "escribir \"\\u{110000}\"\n",
                         "1: \\u{...} lleva entre llaves el código de un carácter, en hexadecimal"},
                    Case{"twoWords", "escribir dos palabras\n",
                         "1: sobra \"palabras\" (un texto con blancos se escribe entre comillas)"},
                    Case{"unknownKey", "tecla Mayús+Introo\n", "1: no hay ninguna tecla \"Mayús+Introo\""},
                    Case{"functionKey13", "tecla F13\n", "1: no hay ninguna tecla \"F13\""},
                    Case{"noAnswer", "responder \"texto\"\n", "1: la respuesta a un mensaje es Sí, No, Aceptar o Esc"},
                    Case{"rowsCountFromOne", "buscar x fila 0\n", "1: las filas se cuentan desde 1"},
                    Case{"nothingExpected", "comprobar foco\n", "1: falta el valor que se espera"},
                    Case{"companySetting", "empresa nueva nombre=x color=3\n", "1: una empresa no tiene color"},
                    Case{"companyValue", "mostrar\nempresa nueva nombre=x ejercicio=1850\n",
                         "2: El ejercicio debe ser un número de 1900 a 2999, y no «1850»."},
                    Case{"companyName", "empresa nueva nombre=\"a\\nb\"\n",
                         "1: El nombre de la empresa tiene caracteres que no se pueden escribir."},
                    Case{"operation", "mostrar\nabrir jNada\n", "2: no hay ninguna operación jNada"},
                    Case{"tooManyArguments", "mostrar\nabrir jCentros x\n", "2: jCentros no lleva argumentos"},
                    Case{"argumentOfAnotherKind", "llamar fnBuscarCuentas x\n",
                         "1: Se esperaba un número entero, y no «x»."},
                    Case{"property", "propiedad Foo = 1\n", "1: no hay ninguna propiedad Foo"},
                    Case{"propertyValue", "propiedad bFactu = 3\n", "1: la propiedad bFactu no puede valer \"3\""},
                    Case{"notUtf8", "mostrar\n# \xFF\n", "2: no es texto UTF-8"},
                    Case{"surrogate", "escribir \"\\u{D800}\"\n",
                         "1: \\u{...} lleva entre llaves el código de un carácter, en hexadecimal"}),
    [](const auto& tried) { return tried.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Strictness, ScriptFailures,
    testing::Values(
        Case{"unexpectedMessageInAScreenThatSwallows", "pulsar cmdPreguntar\n",
             "1: mensaje inesperado: \"¿Sí\\r\\no \\\"no\\\"?\""},
        Case{"unusedAnswer", "responder Sí\ntecla F5\nmostrar\n", "3: la respuesta de la línea 1 no se ha usado"},
        Case{"unusedOfAnotherKind", "pulsar cmdOtra\nfichero x\nresponder \"De vuelta\" Aceptar\ncerrar\ntecla F5\n",
             "5: el fichero de la línea 2 no se ha usado"},
        Case{"unusedAtTheEnd", "fichero x\ncerrar\n", "2: el fichero de la línea 1 no se ha usado"},
        Case{"otherText", "responder contiene \"quizá\" No\npulsar cmdPreguntar\n",
             "2: el mensaje dice \"¿Sí\\r\\no \\\"no\\\"?\" y en la línea 1 se esperaba \"quizá\""},
        Case{"noSuchButton", "responder Aceptar\npulsar cmdPreguntar\n",
             "2: el mensaje \"¿Sí\\r\\no \\\"no\\\"?\" no tiene el botón Aceptar"},
        Case{"unexpectedFile", "pulsar cmdFichero\n",
             "1: pregunta inesperada por un fichero, con la propuesta \"lista.pdf\""},
        Case{"unexpectedError", "pulsar cmdFallar\n", "1: error inesperado: \"No queda sitio.\""},
        Case{"otherError", "esperar error \"permiso\"\npulsar cmdFallar\n",
             "2: el error no dice \"permiso\", sino \"No queda sitio.\""},
        Case{"errorThatDidNotCome", "esperar error\ntecla F5\ntecla F5\n",
             "3: el error que se esperaba de la línea 1 no se ha usado"},
        Case{"searchBeyondTheList", "buscar \"a\" fila 9\npulsar cmdBuscar\n",
             "2: la búsqueda de \"a\" no llega a la fila 9"},
        Case{"noSuchControl", "pulsar cmdNada\n", "1: la pantalla frmToy no tiene ningún control cmdNada"},
        Case{"otherKindOfControl", "marcar cmdOtra\n", "1: cmdOtra no es una casilla"},
        Case{"noScreen", "cerrar\nescribir x\n", "2: no hay ninguna pantalla abierta"},
        Case{"screenOpenAlready", "abrir jCentros\n", "1: no se puede abrir jCentros: está abierta la pantalla frmToy"},
        Case{"check", "escribir ab\ncomprobar Text1(0) = \"a b\"\n",
             "2: valor Text1(0) debía ser \"a b\" y es \"ab\""}),
    [](const auto& tried) { return tried.param.name; });

TEST(Scripts, answerMessagesByKeyboardUnlessTold) {
    const Session answered =
        run("RESPONDER si\npulsar Preguntar\ncomprobar titulo = 83\n"
            "responder No\npulsar cmdpreguntar\ncomprobar titulo = 13\n"
            "responder Esc\npulsar cmdPreguntar\ncomprobar titulo = 229\n"
            "tecla F2\nresponder Sí con raton\npulsar cmdPreguntar\ncomprobar titulo = 113\n");
    EXPECT_EQ(answered.failure, "");
    EXPECT_TRUE(
        answered.printed.starts_with("mensaje \"¿Sí\\r\\no \\\"no\\\"?\" icono=pregunta botones=Sí/No defecto=No "
                                     "título=\"Título\" → Sí\n"))
        << answered.printed;
}

TEST(Scripts, feedScreensOverScreensFromTheSameLines) {
    EXPECT_EQ(run("pulsar cmdOtra\nescribir dentro\ncomprobar Text1(0) = dentro\n"
                  "responder \"De vuelta\" Aceptar\ncerrar\ncomprobar Text1(0) = \"\"\n")
                  .failure,
              "");
}

TEST(Scripts, driveASearchAheadOrStepByStep) {
    const Session ahead =
        run("buscar \"A\" fila 3\npulsar cmdBuscar\ncomprobar Text1(0) = 3\n"
            "buscar ninguno\npulsar cmdBuscar\ncomprobar Text1(0) = \"\"\n");
    EXPECT_EQ(ahead.failure, "");
    EXPECT_TRUE(ahead.printed.starts_with("búsqueda \"\" texto=\"A\" filas=4 → fila 3 | \"3\" | \"Cádiz\"\n"))
        << ahead.printed;
    EXPECT_EQ(run("pulsar cmdBuscar\ncomprobar pantalla frmBuscar\nescribir mala\ncomprobar filas dbgBuscar 1\n"
                  "tecla Intro\ncomprobar Text1(0) = 4\n")
                  .failure,
              "");
}

TEST(Scripts, goOnBehindAnErrorThatWasExpected) {
    const Session expected = run("esperar error \"sitio\"\npulsar cmdFallar\ncomprobar pantalla ninguna\n");
    EXPECT_EQ(expected.failure, "");
    EXPECT_EQ(expected.printed, "error \"No queda sitio.\"\n");
}

TEST(Scripts, readWordsAsWritten) {
    EXPECT_EQ(run("\xEF\xBB\xBF"
                  "escribir \"a\"\"\\\"\\\\ñ\\u{F1}#1\" # fin\r\n"
                  "comprobar Text1(0)=\"a\\\"\\\"\\\\ññ#1\"\nTECLA retroceso 3 veces\ncomprobar Text1(0) <> x\n"
                  "comprobar no existe \"nada de nada\"\ncomprobar Text1(0) contiene \"\\\\\"\n")
                  .failure,
              "");
}

TEST(Scripts, closeWhatTheyLeaveOpen) {
    EXPECT_EQ(run("escribir x\n").printed, "nota el guion acaba con la pantalla frmToy abierta: se cierra\n");
}

}  // namespace
}  // namespace FendaMaestros
