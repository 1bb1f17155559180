#include "app/CommandLine.h"

#include <CLI/CLI.hpp>
#include <cstdio>
#include <exception>
#include <iostream>

#include "app/CommandCrear.h"
#include "app/CommandNif.h"
#include "app/Complaint.h"
#include "app/Composition.h"
#include "app/Folders.h"
#include "app/guion/Guion.h"
#include "ui/Version.h"

namespace FendaMaestros {

namespace {

constexpr int failed = 1;
constexpr int misused = 2;

/// What the command line said, options of every command together.
struct Request {
    std::string folder;
    std::string company;
    TypedCompany newCompany;
    std::vector<std::string> identifiers;
    GuionOptions script;
};

std::shared_ptr<CLI::Formatter> spanishFormatter() {
    auto formatter = std::make_shared<CLI::Formatter>();
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

void addFolder(CLI::App& app, Request& request, const std::string& otherwise) {
    addText(app, "--carpeta", request.folder, "Carpeta de datos; si no se da, la de FENDA_CARPETA o " + otherwise,
            "CARPETA");
}

void describe(CLI::App& program, Request& request) {
    program.formatter(spanishFormatter());
    program.option_defaults()->group("Opciones");
    program.set_help_flag("-h,--ayuda,--help", "Muestra esta ayuda");
    program.set_version_flag("--version", "fenda " + componentVersion(), "Muestra la versión");
    program.require_subcommand(0, 1);
    addFolder(program, request, "la del usuario");
    addText(program, "--empresa", request.company, "Empresa que se abre; si no se da, la primera", "NOMBRE");

    CLI::App* create = addCommand(program, "crear", "Crea una empresa en la carpeta de datos");
    TypedCompany& company = request.newCompany;
    addFolder(*create, request, "la del usuario");
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
    check->footer("Sale con 0 si todos son válidos y con 1 si alguno no lo es.");

    CLI::App* script = addCommand(program, "guion", "Ejecuta la sesión de trabajo escrita en un fichero");
    script->add_option("FICHERO", request.script.script, "El guion; - lo lee de la entrada")->type_name("");
    script->add_flag("--ventana", request.script.onWindows, "Con las ventanas a la vista");
    script->add_flag("--traza", request.script.traced, "Muestra cada texto SQL y cada escritura");
    addFolder(*script, request, "una de prueba que se borra al terminar");
    addText(*script, "--empresa", request.company, "Empresa que se abre; si no se da, la primera", "NOMBRE");
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

int run(const CLI::App& program, Request& request) {
    if (program.got_subcommand("crear")) return runCrear(dataFolder(request.folder), request.newCompany);
    if (program.got_subcommand("nif")) return runNif(request.identifiers);
    if (program.got_subcommand("guion")) {
        if (request.script.script.empty()) throw std::invalid_argument("Falta el fichero del guion.");
        request.script.folder = chosenDataFolder(request.folder);
        if (!request.company.empty()) request.script.company = request.company;
        return runGuion(request.script);
    }
    return runMainWindow(dataFolder(request.folder), request.company);
}

int perform(int argc, char** argv) {
    Request request;
    CLI::App program("Maestros contables: tablas, identificadores fiscales y plan de cuentas", "fenda");
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

}  // namespace FendaMaestros
