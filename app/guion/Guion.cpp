#include "app/guion/Guion.h"

#include <fstream>
#include <iostream>

#include "app/Complaint.h"
#include "app/Composition.h"
#include "app/guion/GuionOperator.h"
#include "app/guion/GuionParser.h"
#include "app/guion/GuionProgram.h"
#include "app/guion/Interruption.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

enum Status { Done = 0, Failed = 1, NotStarted = 2 };

std::vector<Command> readScript(const std::string& name) {
    if (name == "-") return parseGuion(std::cin);
    std::ifstream file(name, std::ios::binary);
    if (!file || std::filesystem::is_directory(name))
        throw std::runtime_error("No se puede leer el guion " + name + ".");
    return parseGuion(file);
}

}  // namespace

int runGuion(const GuionOptions& options) {
    const std::string name = options.script == "-" ? "entrada" : options.script;
    const auto at = [&name](const GuionError& error) {
        return name + ", línea " + std::to_string(error.line) + ": " + error.reason;
    };
    std::optional<Interruption> interruption;
    std::optional<GuionOperator> person;
    std::optional<GuionProgram> program;
    try {
        std::vector<Command> commands = readScript(options.script);
        const bool makesItsCompany =
            !commands.empty() && text::folded(commands.front().text).starts_with("empresa nueva");
        interruption.emplace();
        person.emplace(std::move(commands), std::cout);
        program.emplace(
            options.onWindows ? windowDesktop(*person) : headlessDesktop(*person),
            [](std::string_view line) { std::cout << "traza " << line << "\n"; }, options.place);
        program->trace(options.traced);
        if (!makesItsCompany) program->start(options.company);
    } catch (const GuionError& error) {
        return complain(at(error), NotStarted);
    } catch (const std::exception& error) {
        return complain(error.what(), NotStarted);
    }

    try {
        person->run(*program);
    } catch (const GuionError& error) {
        return complain(at(error), Failed);
    } catch (const std::exception& error) {
        return complain(name + ": " + error.what(), Failed);
    }
    std::cout.flush();
    return std::cout ? Done : complain("No se puede escribir la salida.", Failed);
}

}  // namespace FendaMaestros
