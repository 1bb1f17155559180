#include "app/CommandLine.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <iostream>
#include <optional>
#include <sstream>
#include <utility>

#include "app/CommandCopia.h"
#include "app/CommandCopiar.h"
#include "app/CommandCrear.h"
#include "app/CommandExportar.h"
#include "app/CommandIdentidades.h"
#include "app/CommandImportar.h"
#include "app/CommandListado.h"
#include "app/CommandNif.h"
#include "app/CommandRenumerar.h"
#include "app/CommandRestaurar.h"
#include "app/CommandRevisar.h"
#include "app/CommandServidor.h"
#include "app/CommandVerificar.h"
#include "app/Complaint.h"
#include "app/Composition.h"
#include "app/Place.h"
#include "app/guion/Guion.h"
#include "ui/Version.h"

namespace FendaMaestros {

namespace {

constexpr int failed = 1;
constexpr int misused = 2;

/// What the command line said, options of every command together.
struct Request {
    TypedPlace place;
    std::string company;
    TypedCompany newCompany;
    std::vector<std::string> identifiers;
    bool explained = false;
    GuionOptions script;
    TypedListado listing;
    VerificarOptions check;
    std::string registerOrder;
    bool registerDescending = false;
    std::string origin, goal;
    bool sqlShown = false;
    std::string backup;
    TypedImport import;
    TypedRenumbering renumbering;
    /// A flag: a spreadsheet at `import.file`.
    bool sheet = false;
    /// A file for each of the outputs that go to one; which one is asked for, the parser knows.
    std::string csv, xlsx, pdf;
    bool json = false;
};

/// Columns stay in line behind letters of more than one byte.
class LettersFormatter : public CLI::Formatter {
public:
    std::string make_option(const CLI::Option* option, bool isPositional) const override {
        const std::string name = make_option_name(option, isPositional) + make_option_opts(option);
        const auto isInside = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) == 0x80; };
        const auto inside = static_cast<std::size_t>(std::count_if(name.begin(), name.end(), isInside));
        std::stringstream line;
        CLI::detail::format_help(line, name, make_option_desc(option), get_column_width() + inside);
        return line.str();
    }
};

std::shared_ptr<CLI::Formatter> spanishFormatter() {
    auto formatter = std::make_shared<LettersFormatter>();
    formatter->label("Usage", "Uso");
    formatter->label("Positionals", "Argumentos");
    formatter->label("OPTIONS", "OPCIONES");
    formatter->label("SUBCOMMAND", "ORDEN");
    formatter->label("SUBCOMMANDS", "ÓRDENES");
    formatter->label("REQUIRED", "(obligatorio)");
    formatter->label("Env", "variable");
    formatter->label("TEXT", "TEXTO");
    formatter->column_width(32);
    return formatter;
}

CLI::App* addCommand(CLI::App& program, const std::string& name, const std::string& description) {
    CLI::App* command = program.add_subcommand(name, description);
    command->group("Órdenes");
    command->get_help_ptr()->group("Opciones");
    return command;
}

CLI::Option* addText(CLI::App& app, const std::string& name, std::string& value, const std::string& description,
                     const std::string& what) {
    return app.add_option(name, value, description)->type_name(what)->take_last();
}

void addPlace(CLI::App& app, Request& request, const std::string& otherwise) {
    addText(app, "--carpeta", request.place.folder, "Carpeta de datos; si no se da, la de FENDA_CARPETA o " + otherwise,
            "CARPETA");
    addText(app, "--servidor", request.place.server,
            "Servidor PostgreSQL con las empresas, como service=fenda; si no se da, el de FENDA_SERVIDOR", "CONEXIÓN");
}

void addCompany(CLI::App& app, Request& request) {
    addText(app, "--empresa", request.company, "Empresa que se abre; si no se da, la primera", "NOMBRE");
}

/// What the commands that list have in common.
void addOutputs(CLI::App& app, Request& request) {
    addText(app, "--csv", request.csv, "En CSV, a un fichero o a la salida", "[FICHERO]")->expected(0, 1);
    addText(app, "--xlsx", request.xlsx, "En una hoja de cálculo", "FICHERO");
    addText(app, "--pdf", request.pdf, "En un documento PDF, como se imprime", "FICHERO");
    app.add_flag("--json", request.json, "En JSON");
    addPlace(app, request, "la del usuario");
    addCompany(app, request);
}

void describeListing(CLI::App& program, Request& request) {
    CLI::App& app = *addCommand(program, "listado", "Lista el plan de cuentas, como el informe de la pantalla");
    TypedListado& listing = request.listing;
    addText(app, "--tipo", listing.kind,
            "subcuentas (si no se da), completo, cuentas (con las del plan), departamentos, centros o nif", "TIPO");
    addText(app, "--desde", listing.from, "Primera cuenta; 43 es 43000000, y 43,5 es 43000005", "CUENTA");
    addText(app, "--hasta", listing.to, "Última cuenta", "CUENTA");
    addText(app, "--nombre", listing.name, "Cómo empieza el nombre de la cuenta", "NOMBRE");
    app.add_flag("--en-cualquier-parte", listing.anywhere, "Ese nombre puede estar en medio");
    addText(app, "--departamento", listing.department, "Código o nombre de un departamento", "DEPARTAMENTO");
    addText(app, "--centro", listing.centre, "Código o nombre de un centro", "CENTRO");
    addText(app, "--estado", listing.state, "activas (si no se da), inactivas o todas", "ESTADO");
    addText(app, "--desde-saldo", listing.fromBalance, "Saldo mínimo, como 1.234,56", "SALDO");
    addText(app, "--hasta-saldo", listing.toBalance, "Saldo máximo", "SALDO");
    app.add_flag("--con-saldo", listing.withBalance, "Con el saldo de cada cuenta y el total");
    addText(app, "--orden", listing.order, "cuenta, descripcion o, en esos tipos, departamento o centro", "ORDEN");
    app.add_flag("--descendente", listing.descending, "De mayor a menor");
    addOutputs(app, request);
    app.footer("Sin otra salida, una tabla. Sale con 0, o con 2 si no se puede.");
}

void describeRegister(CLI::App& program, Request& request) {
    CLI::App& app = *addCommand(program, "identidades", "Lista las identidades fiscales registradas");
    addText(app, "--orden", request.registerOrder,
            "nombre (si no se da), nif, direccion, postal, poblacion, provincia o pais", "ORDEN");
    app.add_flag("--descendente", request.registerDescending, "De mayor a menor");
    addOutputs(app, request);
    app.footer("Sin otra salida, una tabla. Sale con 0, o con 2 si no se puede.");
}

void describeCheck(CLI::App& program, Request& request) {
    CLI::App& app = *addCommand(program, "verificar", "Busca subcuentas erróneas en el plan de cuentas");
    app.add_flag("--plan", request.check.plan, "Solo las que no cuelgan de una cuenta del plan oficial");
    app.add_flag("--subcuentas", request.check.subaccounts, "Solo las de código repetido o de otra longitud");
    app.add_flag("--json", request.check.json, "En JSON");
    addPlace(app, request, "la del usuario");
    addCompany(app, request);
    app.footer(
        "Una línea por cuenta; no cambia nada. Sale con 0 si no encuentra ninguna, con 1 si encuentra alguna y "
        "con 2 si no se puede.");
}

void describeCopy(CLI::App& program, Request& request) {
    CLI::App& app = *addCommand(program, "copiar", "Copia una empresa entera, con los datos comunes, a otro sitio");
    for (auto [name, value] : {std::pair{"ORIGEN", &request.origin}, std::pair{"DESTINO", &request.goal}})
        app.add_option(name, *value, "Una carpeta de datos o un servidor, como service=fenda")->type_name("");
    addText(app, "--empresa", request.company, "Empresa que se copia; no hace falta si no hay otra", "NOMBRE");
    app.footer("La empresa queda entera en el destino, o no queda nada. Los ficheros que la acompañan no se copian.");
}

void addExchange(CLI::App& app, Request& request, const std::string& file) {
    app.add_option("QUÉ", request.import.kind, "cuentas (con sus identidades) o identidades")->type_name("");
    app.add_option("FICHERO", request.import.file, file)->type_name("");
    addPlace(app, request, "la del usuario");
    addCompany(app, request);
}

void describeExchange(CLI::App& program, Request& request) {
    TypedImport& import = request.import;
    CLI::App& take = *addCommand(program, "importar", "Importa cuentas o identidades de un fichero CSV");
    addExchange(take, request, "El fichero CSV");
    take.add_flag("--aplicar", import.apply, "Escribe lo nuevo y lo que cambia, todo o nada; sin ella solo se muestra");
    take.add_flag("--omitir-erroneas", import.omitWrong, "Importa las demás filas aunque haya erróneas");
    take.add_flag("--fuera-del-plan", import.outsidePlan, "Admite cuentas nuevas que no cuelgan del plan oficial");
    addText(take, "--erroneas", import.wrongRows, "Guarda las filas erróneas, con su motivo, en un CSV", "FICHERO");
    addText(take, "--codificacion", import.encoding, "Si no se da, la que el fichero tenga", "utf-8|windows-1252");
    addText(take, "--separador", import.separator, "; , o tab; si no se da, el que el fichero tenga", "SEPARADOR");
    take.add_flag("--con-cabecera", import.withHeader, "La primera fila son los títulos de las columnas");
    take.add_flag("--sin-cabecera", import.withoutHeader, "La primera fila ya es una cuenta o una identidad");
    addText(take, "--columnas", import.columns, "Columnas a mano, por número o título: \"cuenta=1,nif=Documento\"",
            "COLUMNAS");
    take.footer(
        "Una celda vacía no cambia lo que hay. Sale con 0, con 1 si hay filas erróneas y con 2 si no se puede.");

    CLI::App& give = *addCommand(program, "exportar", "Exporta cuentas o identidades para importarlas en otro sitio");
    addExchange(give, request, "El fichero; sin él, la salida");
    give.add_flag("--xlsx", request.sheet, "Una hoja de cálculo en lugar de un CSV");
    give.footer("Sale con 0, o con 2 si no se puede.");
}

void describeRenumbering(CLI::App& program, Request& request) {
    CLI::App& app = *addCommand(program, "renumerar", "Cambia códigos de subcuentas con sus apuntes y enlaces");
    app.require_subcommand(0, 1);
    TypedRenumbering& typed = request.renumbering;
    const auto finish = [&](CLI::App& command, const std::string& footer) {
        command.add_flag("--aplicar", typed.apply, "Lo escribe, todo o nada; sin ella solo se muestra");
        addText(command, "--informe", typed.report, "Guarda lo que se ha visto o hecho; en CSV si acaba en .csv",
                "FICHERO");
        addPlace(command, request, "la del usuario");
        addCompany(command, request);
        command.footer(footer + "Sale con 0, con 1 si algo lo impide y con 2 si no se puede.");
    };

    CLI::App& account = *addCommand(app, "cuenta", "Da a una subcuenta un código libre");
    account.add_option("CUENTA", typed.from, "La subcuenta; 43,5 es 43000005")->type_name("");
    account.add_option("CÓDIGO", typed.to, "El código nuevo; 43, es el siguiente libre del 43")->type_name("");
    account.add_flag("--fuera-del-plan", typed.outsidePlan, "Admite un código que no cuelga del plan oficial");
    finish(account, "");

    CLI::App& digits = *addCommand(app, "digitos", "Cambia la longitud de todas las subcuentas");
    digits.add_option("DÍGITOS", typed.digits, "De 4 a 15")->type_name("");
    finish(digits,
           "Los ceros entran o salen detrás de la cuenta del plan: 43000001 pasa a ser 4300000001. Los demás puestos "
           "deben salir antes de la empresa. ");

    CLI::App& merge = *addCommand(app, "fundir", "Pasa lo de una subcuenta a otra y la elimina");
    merge.add_option("CUENTA", typed.from, "La que desaparece")->type_name("");
    merge.add_option("QUEDA", typed.to, "La que queda")->type_name("");
    addText(merge, "--identidad", typed.identity, "Con dos identidades distintas, de cuál es la que queda",
            "desaparece|queda");
    finish(merge, "");
}

void describeServer(CLI::App& program, Request& request) {
    CLI::App& app = *addCommand(program, "servidor", "Prepara un servidor PostgreSQL para tener empresas");
    app.require_subcommand(0, 1);
    CLI::App& prepare = *addCommand(app, "preparar", "Crea en su base de datos lo que hace falta; se puede repetir");
    addText(prepare, "--servidor", request.place.server, "Conexión de quien lo administra, como dbname=conta",
            "CONEXIÓN");
    prepare.add_flag("--mostrar", request.sqlShown, "Muestra el SQL y no hace nada");
}

void describeCare(CLI::App& program, Request& request) {
    CLI::App& examine = *addCommand(program, "revisar", "Revisa el estado de los datos: ficheros, índices y enlaces");
    addPlace(examine, request, "la del usuario");
    addText(examine, "--empresa", request.company, "Empresa que se revisa; si no se da, todas", "NOMBRE");
    examine.footer(
        "Una línea por cada cosa que encuentra; no cambia nada. Sale con 0 si no encuentra ninguna, con 1 si encuentra "
        "alguna y con 2 si no se puede.");

    CLI::App& copy = *addCommand(program, "copia", "Hace una copia de seguridad de todas las empresas de una carpeta");
    copy.add_option("DESTINO", request.backup, "La carpeta de la copia, que no debe existir")->type_name("");
    addPlace(copy, request, "la del usuario");
    copy.footer(
        "Se puede hacer mientras otros trabajan. La copia es otra carpeta de datos: con --carpeta se puede consultar.");

    CLI::App& restore = *addCommand(program, "restaurar", "Recupera una copia de seguridad donde no haya datos");
    restore.add_option("COPIA", request.backup, "La carpeta de la copia")->type_name("");
    addPlace(restore, request, "la del usuario");
    restore.footer(
        "Revisa la copia antes, y no sobrescribe nada: la carpeta de datos no debe existir o debe estar vacía.");
}

void describe(CLI::App& program, Request& request) {
    program.name("fenda");
    program.description("Maestros contables: tablas, identificadores fiscales y plan de cuentas");
    program.formatter(spanishFormatter());
    program.option_defaults()->group("Opciones");
    program.set_help_flag("-h,--ayuda,--help", "Muestra esta ayuda");
    program.set_version_flag("--version", "fenda " + componentVersion(), "Muestra la versión");
    program.require_subcommand(0, 1);
    addPlace(program, request, "la del usuario");
    addCompany(program, request);

    CLI::App* create = addCommand(program, "crear", "Crea una empresa");
    TypedCompany& company = request.newCompany;
    addPlace(*create, request, "la del usuario");
    addText(*create, "--nombre", company.name, "Nombre de la empresa", "NOMBRE");
    addText(*create, "--ejercicio", company.fiscalYear, "Ejercicio contable; si no se da, el año en curso",
            "EJERCICIO");
    addText(*create, "--digitos", company.accountDigits, "Dígitos de una subcuenta, de 4 a 15; si no se da, 8", "N");
    addText(*create, "--provincia", company.province, "Código de la provincia, 99 en el extranjero; si no se da, 28",
            "PROVINCIA");
    addText(*create, "--orden", company.nameOrder, "Orden del nombre de las personas; si no se da, nombre",
            "nombre|apellidos");

    CLI::App* check =
        addCommand(program, "nif", "Comprueba identificadores fiscales (NIF, NIE, CIF, intracomunitarios)");
    check->add_option("ID", request.identifiers, "Identificadores; sin ninguno, uno por línea de la entrada")
        ->type_name("");
    check->add_flag("--explicar", request.explained, "Dice qué es cada uno, qué le falta y qué norma lo manda");
    check->add_flag("--json", request.json, "Lo mismo, un objeto JSON por línea");
    check->footer("Sale con 0 si todos son válidos y con 1 si alguno no lo es.");

    CLI::App* script = addCommand(program, "guion", "Ejecuta la sesión de trabajo escrita en un fichero");
    script->add_option("FICHERO", request.script.script, "El guion; - lo lee de la entrada")->type_name("");
    script->add_flag("--ventana", request.script.onWindows, "Con las ventanas a la vista");
    script->add_flag("--traza", request.script.traced, "Muestra cada texto SQL y cada escritura");
    addPlace(*script, request, "una de prueba que se borra al terminar");
    addCompany(*script, request);

    describeCopy(program, request);
    describeServer(program, request);
    describeListing(program, request);
    describeRegister(program, request);
    describeCheck(program, request);
    describeExchange(program, request);
    describeRenumbering(program, request);
    describeCare(program, request);
}

/// The parser's own sentences are not Spanish; what it names stands before or behind their colon.
std::string explain(const CLI::ParseError& error) {
    const std::string sentence = error.what();
    const std::size_t colon = sentence.find(": ");
    const std::string help = ". Con --ayuda se ve cómo se usa.";
    if (colon == std::string::npos) return "La línea de órdenes no se entiende" + help;
    if (dynamic_cast<const CLI::ExtrasError*>(&error))
        return "No se entiende «" + sentence.substr(colon + 2) + "»" + help;
    return "Falta el valor de " + sentence.substr(0, colon) + help;
}

/// The one output that a command that lists was asked for.
ListingOutput outputOf(const CLI::App& command, const Request& request) {
    using Kind = ListingOutput::Kind;
    const std::array<std::pair<const char*, ListingOutput>, 4> outputs{{{"--csv", {Kind::Csv, request.csv}},
                                                                        {"--xlsx", {Kind::Xlsx, request.xlsx}},
                                                                        {"--pdf", {Kind::Pdf, request.pdf}},
                                                                        {"--json", {Kind::Json, ""}}}};
    std::optional<ListingOutput> chosen;
    for (const auto& [option, output] : outputs) {
        if (command.count(option) == 0) continue;
        if (chosen) throw std::invalid_argument("Solo se puede pedir una salida cada vez.");
        chosen = output;
        const bool needsFile = output.kind == Kind::Xlsx || output.kind == Kind::Pdf;
        if (needsFile && output.path.empty())
            throw std::invalid_argument(std::string("Falta el fichero de ") + option + ".");
    }
    return chosen.value_or(ListingOutput());
}

/// The commands whose status 1 says something else than that they failed.
bool isQuery(const CLI::App& program) {
    return program.got_subcommand("listado") || program.got_subcommand("identidades") ||
           program.got_subcommand("verificar") || program.got_subcommand("revisar") ||
           program.got_subcommand("importar") || program.got_subcommand("exportar") ||
           program.got_subcommand("renumerar");
}

int runRenumbering(const CLI::App& program, const Place& place, const Request& request) {
    const auto kinds = program.get_subcommand("renumerar")->get_subcommands();
    if (kinds.empty()) throw std::invalid_argument("Falta lo que se renumera: cuenta, digitos o fundir.");
    return runRenumerar(place, request.company, kinds.front()->get_name(), request.renumbering);
}

int runQuery(const CLI::App& program, const Request& request) {
    const Place place = placeOfCompanies(request.place);
    if (program.got_subcommand("verificar")) return runVerificar(place, request.company, request.check);
    if (program.got_subcommand("revisar")) return runRevisar(place, request.company);
    if (program.got_subcommand("importar")) return runImportar(place, request.company, request.import);
    if (program.got_subcommand("exportar"))
        return runExportar(place, request.company, request.import.kind, request.import.file, request.sheet);
    if (program.got_subcommand("renumerar")) return runRenumbering(program, place, request);
    const ListingOutput output = outputOf(*program.get_subcommands().front(), request);
    if (program.got_subcommand("listado")) return runListado(place, request.company, request.listing, output);
    return runIdentidades(place, request.company, request.registerOrder, request.registerDescending, output);
}

int runBackup(const CLI::App& program, const Request& request) {
    if (request.backup.empty()) throw std::invalid_argument("Falta la carpeta de la copia.");
    const Place place = placeOfCompanies(request.place);
    return program.got_subcommand("copia") ? runCopia(place, request.backup) : runRestaurar(request.backup, place);
}

NifOutput nifOutput(const Request& request) {
    if (request.json) return NifOutput::Json;
    return request.explained ? NifOutput::Explanation : NifOutput::Verdict;
}

int run(const CLI::App& program, Request& request) {
    if (isQuery(program)) return runQuery(program, request);
    if (program.got_subcommand("crear")) return runCrear(placeOfCompanies(request.place), request.newCompany);
    if (program.got_subcommand("copiar")) {
        if (request.goal.empty())
            throw std::invalid_argument(request.origin.empty() ? "Faltan el origen y el destino de la copia."
                                                               : "Falta el destino de la copia.");
        return runCopiar(readPlace(request.origin), readPlace(request.goal), request.company);
    }
    if (const auto* server = program.get_subcommand("servidor"); server->parsed()) {
        if (!server->got_subcommand("preparar"))
            throw std::invalid_argument("Falta lo que se hace en el servidor: preparar.");
        return runServidorPreparar(request.place, request.sqlShown);
    }
    if (program.got_subcommand("copia") || program.got_subcommand("restaurar")) return runBackup(program, request);
    if (program.got_subcommand("nif")) return runNif(request.identifiers, nifOutput(request));
    if (program.got_subcommand("guion")) {
        if (request.script.script.empty()) throw std::invalid_argument("Falta el fichero del guion.");
        request.script.place = chosenPlace(request.place);
        if (!request.company.empty()) request.script.company = request.company;
        return runGuion(request.script);
    }
    return runMainWindow(chosenPlace(request.place), request.company);
}

int perform(int argc, char** argv) {
    Request request;
    CLI::App program;
    describe(program, request);
    try {
        program.parse(argc, argv);
    } catch (const CLI::Success& question) {
        return program.exit(question);
    } catch (const CLI::ParseError& error) {
        return complain(explain(error), misused);
    }
    try {
        return run(program, request);
    } catch (const std::invalid_argument& error) {
        return complain(error.what(), misused);
    } catch (const std::exception& error) {
        return complain(error.what(), isQuery(program) ? misused : failed);
    }
}

}  // namespace

int runCommandLine(int argc, char** argv) {
    try {
        return perform(argc, argv);
    } catch (const std::exception& error) {
        return complain(error.what(), failed);
    } catch (...) {
        return complain("Error desconocido.", failed);
    }
}

void readCommandLine(const std::function<void(const CLI::App& program)>& read) {
    Request request;
    CLI::App program;
    describe(program, request);
    read(program);
}

}  // namespace FendaMaestros
