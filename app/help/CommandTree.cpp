#include "app/help/CommandTree.h"

#include <CLI/CLI.hpp>

namespace FendaMaestros::help {

namespace {

void addCommands(const CLI::App& app, const std::string& path, std::vector<Command>& commands) {
    for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
        commands.push_back({path + command->get_name(), command});
        addCommands(*command, commands.back().path + " ", commands);
    }
}

}  // namespace

std::vector<Command> commandsIn(const CLI::App& program) {
    std::vector<Command> commands;
    addCommands(program, "", commands);
    return commands;
}

std::vector<const CLI::Option*> optionsIn(const CLI::App& command) {
    return command.get_options([](const CLI::Option* option) { return option->nonpositional(); });
}

std::vector<const CLI::Option*> argumentsIn(const CLI::App& command) {
    return command.get_options([](const CLI::Option* option) { return option->get_positional(); });
}

std::vector<std::string> namesOf(const CLI::Option& option) {
    std::vector<std::string> names;
    for (const std::string& name : option.get_snames()) names.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
    return names;
}

bool takesValue(const CLI::Option& option) { return option.get_expected_max() != 0; }

}  // namespace FendaMaestros::help
