// Writes what is told of the command line outside of the program, from the command line itself:
//   fenda_help TEMPLATE OUTPUT
// A line of the template that is @OPTIONS@, @COMMANDS@, @COMPLETION_COMMANDS@ or @COMPLETION_VALUES@ gives way to the
// text of that name, and @VERSION@ anywhere to the version.

#include <exception>
#include <fstream>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string>

#include "app/CommandLine.h"
#include "app/help/HelpTexts.h"
#include "toolkit/Text.h"
#include "ui/Version.h"

namespace {

using namespace FendaMaestros;

using Texts = std::map<std::string, std::string>;

Texts textsOf(const CLI::App& program) {
    return {{"@OPTIONS@", help::manualOptions(program)},
            {"@COMMANDS@", help::manualCommands(program)},
            {"@COMPLETION_COMMANDS@", help::completionCommands(program)},
            {"@COMPLETION_VALUES@", help::completionValues(program)}};
}

void fill(std::istream& form, const Texts& texts, std::ostream& out) {
    for (std::string line; std::getline(form, line);) {
        const auto text = texts.find(line);
        if (text != texts.end())
            out << text->second;
        else
            out << text::replaced(line, "@VERSION@", componentVersion()) << '\n';
    }
}

}  // namespace

int main(int argc, char** argv) {
    try {
        if (argc != 3) throw std::invalid_argument("Uso: fenda_help PLANTILLA SALIDA");
        std::ifstream form(argv[1]);
        std::ofstream out(argv[2]);
        if (!form || !out) throw std::runtime_error("No se puede leer la plantilla o escribir la salida.");
        readCommandLine([&](const CLI::App& program) { fill(form, textsOf(program), out); });
        if (!out.flush()) throw std::runtime_error("No se ha podido escribir la salida entera.");
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
