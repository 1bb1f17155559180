#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace FendaMaestros::help {

/// A command with the words that lead to it, "servidor preparar".
struct Command {
    std::string path;
    const CLI::App* app;
};

/// Those of a program, without the program itself, each in front of those behind it.
std::vector<Command> commandsIn(const CLI::App& program);

/// Options and arguments in the order in which the help shows them.
std::vector<const CLI::Option*> optionsIn(const CLI::App& command);
std::vector<const CLI::Option*> argumentsIn(const CLI::App& command);

/// With their dashes, the short ones in front.
std::vector<std::string> namesOf(const CLI::Option& option);

bool takesValue(const CLI::Option& option);

}  // namespace FendaMaestros::help
