#include <algorithm>
#include <array>
#include <filesystem>
#include <limits>
#include <stdexcept>

#include "app/guion/GuionCheck.h"
#include "app/guion/GuionOperator.h"
#include "app/guion/GuionParser.h"
#include "app/guion/PublicProperties.h"

namespace FendaMaestros {

namespace {

using Action = std::function<void(GuionOperator&)>;

using ReadAction = Action (*)(Words&);
using ReadPreparation = Preparation (*)(Words&);

/// How a command is written, and what it is: one of the three has its reader.
struct Verb {
    std::string_view name;
    /// It does something to a screen, or opens one.
    ReadAction acts = nullptr;
    /// It looks, or sets something, and no message can come of it.
    ReadAction looks = nullptr;
    /// It prepares something for the next one that acts.
    ReadPreparation prepares = nullptr;
};

constexpr std::string_view controlName = "el nombre del control";

guion::Place place(Words& words, std::string_view what) {
    if (words.isNumber()) return {words.number(what), {}};
    return {-1, words.text(what)};
}

guion::Limits limits(Words& words) {
    guion::Limits limits;
    if (!words.take("filas")) return limits;
    limits.rows = words.take("todas") ? std::numeric_limits<int>::max() : words.number("el número de filas");
    return limits;
}

// --- the host

/// Reads something whose values are checked elsewhere; what does not fit is a fault of the line.
template <class Check>
void check(Words& words, Check&& fits) {
    try {
        fits();
    } catch (const std::invalid_argument& error) {
        words.fail(error.what());
    }
}

template <bool alone>
Action call(Words& words) {
    const std::string name = words.text("el nombre de la operación");
    const Operation* const operation = findOperation(name);
    if (!operation) words.fail("no hay ninguna operación " + name);
    const Arguments arguments(words.rest());
    check(words, [&] { checkArguments(*operation, arguments); });
    return [operation, arguments](GuionOperator& person) { person.call(*operation, arguments, alone); };
}

Action property(Words& words) {
    const std::string name = words.text("el nombre de la propiedad");
    words.equals();
    const std::string value = words.text("el valor de la propiedad");
    check(words, [&] { checkedProperty(name, value); });
    return [name, value](GuionOperator& person) { person.host().setProperty(name, value); };
}

Action renewObject(Words& words) {
    if (!words.take("nuevo")) words.fail("se escribe: objeto nuevo");
    return [](GuionOperator& person) { person.betweenScreens([](GuionHost& host) { host.renewObject(); }); };
}

Action company(Words& words) {
    if (words.take("abrir")) {
        const std::string name = words.text("el nombre de la empresa");
        return
            [name](GuionOperator& person) { person.betweenScreens([&](GuionHost& host) { host.openCompany(name); }); };
    }
    if (!words.take("nueva")) words.fail("se escribe: empresa nueva, o empresa abrir");
    static constexpr std::array<std::pair<std::string_view, std::string TypedCompany::*>, 5> known{{
        {"nombre", &TypedCompany::name},
        {"ejercicio", &TypedCompany::fiscalYear},
        {"digitos", &TypedCompany::accountDigits},
        {"provincia", &TypedCompany::province},
        {"orden", &TypedCompany::nameOrder},
    }};
    TypedCompany company;
    while (!words.atEnd()) {
        const std::string setting = words.keyword("un dato de la empresa");
        const auto field = std::ranges::find(known, setting, [](const auto& pair) { return pair.first; });
        if (field == known.end()) words.fail("una empresa no tiene " + setting);
        words.equals();
        company.*field->second = words.text("el valor de " + setting);
    }
    check(words, [&] { (void)readCompany(company); });
    return [company](GuionOperator& person) {
        person.betweenScreens([&](GuionHost& host) { host.createCompany(company); });
    };
}

Action trace(Words& words) {
    return [on = words.yesOrNo("sí o no")](GuionOperator& person) { person.host().trace(on); };
}

// --- answers ahead

Preparation answer(Words& words) {
    ExpectedMessage expected{.line = words.line()};
    expected.part = words.take("contiene");
    if (expected.part || words.isQuoted()) expected.text = words.text("el texto del mensaje");
    if (words.take("si"))
        expected.answer = Answer::Yes;
    else if (words.take("no"))
        expected.answer = Answer::No;
    else if (words.take("aceptar"))
        expected.answer = Answer::Ok;
    else if (!words.take("esc"))
        words.fail("la respuesta a un mensaje es Sí, No, Aceptar o Esc");
    if (words.take("con")) {
        if (!words.take("raton")) words.fail("se escribe: con ratón");
        expected.byMouse = true;
    }
    return expected;
}

Preparation file(Words& words) {
    ExpectedFile expected;
    if (words.take("propuesto"))
        expected.proposed = true;
    else if (!words.take("ninguno"))
        expected.name = words.text("el nombre del fichero");
    return expected;
}

Preparation search(Words& words) {
    ExpectedSearch expected;
    if (words.take("ninguno")) {
        expected.leave = true;
    } else {
        expected.text = words.text("el texto que se busca");
        if (words.take("fila")) expected.row = words.number("el número de la fila");
        if (expected.row < 1) words.fail("las filas se cuentan desde 1");
    }
    return expected;
}

Preparation expectError(Words& words) {
    if (!words.take("error")) words.fail("se escribe: esperar error");
    ExpectedError expected;
    if (!words.atEnd()) expected.part = words.text("el texto del error");
    return expected;
}

// --- gestures

Action type(Words& words) {
    return [text = words.text("el texto que se escribe")](GuionOperator& person) { person.hands().type(text); };
}

Action key(Words& words) {
    KeyStroke stroke;
    check(words, [&] { stroke = keyStroke(words.text("el nombre de la tecla")); });
    int times = 1;
    if (!words.atEnd()) times = words.number("el número de veces");
    if (!words.take("veces")) words.take("vez");
    return [stroke, times](GuionOperator& person) { person.hands().key(stroke, times); };
}

Action go(Words& words) {
    words.take("a");
    return [name = words.text(controlName)](GuionOperator& person) { person.hands().go(name); };
}

Action press(Words& words) {
    return [name = words.text(controlName)](GuionOperator& person) { person.hands().press(name); };
}

template <bool value>
Action tick(Words& words) {
    return [name = words.text(controlName)](GuionOperator& person) { person.hands().tick(name, value); };
}

Action choose(Words& words) {
    const std::string name = words.text(controlName);
    std::optional<guion::Place> item;
    words.equals();
    if (!words.atEnd()) item = place(words, "el elemento");
    return [name, item](GuionOperator& person) { person.hands().choose(name, item); };
}

Action clickHeader(Words& words) {
    const std::string name = words.text(controlName);
    const guion::Place column = place(words, "la columna");
    return [name, column](GuionOperator& person) { person.hands().clickHeader(name, column); };
}

Action clickRow(Words& words) {
    const std::string name = words.text(controlName);
    const guion::Place row = place(words, "la fila");
    return [name, row](GuionOperator& person) { person.hands().clickRow(name, row); };
}

Action doubleClickRow(Words& words) {
    words.take("clic");
    const std::string name = words.text(controlName);
    std::optional<guion::Place> row;
    if (!words.atEnd()) row = place(words, "la fila");
    return [name, row](GuionOperator& person) { person.hands().doubleClickRow(name, row); };
}

Action clickCellButton(Words& words) {
    const std::string name = words.text(controlName);
    const guion::Place column = place(words, "la columna");
    return [name, column](GuionOperator& person) { person.hands().clickCellButton(name, column); };
}

Action close(Words&) {
    return [](GuionOperator& person) { person.hands().close(); };
}

// --- looking

Action show(Words& words) {
    if (words.take("propiedades")) return [](GuionOperator& person) { person.showProperties(); };
    if (words.take("parametros")) return [](GuionOperator& person) { person.showParameters(); };
    guion::Limits shown = limits(words);
    if (words.atEnd()) return [shown](GuionOperator& person) { person.show(shown); };
    const std::string name = words.text(controlName);
    shown = limits(words);
    return [name, shown](GuionOperator& person) { person.show(name, shown); };
}

Action expectState(Words& words) {
    return [check = readCheck(words)](GuionOperator& person) { carryOut(check, person); };
}

Action exists(Words& words) {
    return [name = words.text("el nombre del fichero")](GuionOperator& person) {
        carryOut(Check{.subject = "existe", .arguments = {{name, true}}, .expected = "sí"}, person);
        person.say("existe " + guion::literal(name));
    };
}

Action sql(Words& words) {
    const std::string text = words.text("el texto SQL");
    return [text, shown = limits(words)](GuionOperator& person) { person.read(text, shown); };
}

Action copy(Words& words) {
    const std::string from = words.text("el fichero que se copia");
    const std::string to = words.text("el nombre de la copia");
    return [from, to](GuionOperator&) {
        std::error_code error;
        std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing, error);
        if (error) guion::fail("no se ha podido copiar " + guion::literal(from) + " en " + guion::literal(to));
    };
}

Action say(Words& words) {
    return [text = words.text("el texto")](GuionOperator& person) { person.say(text); };
}

Action echo(Words& words) {
    return [on = words.yesOrNo("sí o no")](GuionOperator& person) { person.echo(on); };
}

Action pause(Words& words) {
    return [milliseconds = words.number("los milisegundos")](GuionOperator& person) { person.pause(milliseconds); };
}

/// The commands of docs/guion.md.
constexpr std::array<Verb, 30> verbs{{
    {.name = "abrir", .acts = call<true>},
    {.name = "llamar", .acts = call<false>},
    {.name = "propiedad", .looks = property},
    {.name = "objeto", .acts = renewObject},
    {.name = "empresa", .acts = company},
    {.name = "traza", .looks = trace},
    {.name = "responder", .prepares = answer},
    {.name = "fichero", .prepares = file},
    {.name = "buscar", .prepares = search},
    {.name = "esperar", .prepares = expectError},
    {.name = "escribir", .acts = type},
    {.name = "tecla", .acts = key},
    {.name = "ir", .acts = go},
    {.name = "pulsar", .acts = press},
    {.name = "marcar", .acts = tick<true>},
    {.name = "desmarcar", .acts = tick<false>},
    {.name = "elegir", .acts = choose},
    {.name = "cabecera", .acts = clickHeader},
    {.name = "fila", .acts = clickRow},
    {.name = "doble", .acts = doubleClickRow},
    {.name = "boton", .acts = clickCellButton},
    {.name = "cerrar", .acts = close},
    {.name = "mostrar", .looks = show},
    {.name = "comprobar", .looks = expectState},
    {.name = "existe", .looks = exists},
    {.name = "sql", .acts = sql},
    {.name = "copiar", .looks = copy},
    {.name = "decir", .looks = say},
    {.name = "eco", .looks = echo},
    {.name = "pausa", .looks = pause},
}};

}  // namespace

Command parseCommand(int line, std::string_view text) {
    Words words(line, text);
    const std::string name = words.keyword("la orden");
    const auto verb = std::ranges::find(verbs, name, &Verb::name);
    if (verb == verbs.end()) words.fail("no hay ninguna orden \"" + name + "\"");
    Command command{.line = line, .text = std::string(text), .acts = verb->acts != nullptr};
    if (verb->prepares)
        command.preparation = verb->prepares(words);
    else
        command.run = (verb->acts ? verb->acts : verb->looks)(words);
    words.end();
    return command;
}

}  // namespace FendaMaestros
