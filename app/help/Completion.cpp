#include <CLI/CLI.hpp>
#include <cctype>
#include <regex>

#include "app/help/CommandTree.h"
#include "app/help/HelpTexts.h"

namespace FendaMaestros::help {

namespace {

const std::string aFile = "<fichero>";
const std::string aFolder = "<carpeta>";
const std::string aText = "<texto>";

/// "activas (si no se da), inactivas o todas" and "nombre|apellidos" give their words.
std::string wordsListed(const std::string& text) {
    static const std::regex remark(" ?\\([^)]*\\)|;.*"), separator(", *|[|]| o,? *"), word("[a-z0-9-]+");
    const std::string bare = std::regex_replace(text, remark, "");
    std::string words;
    for (std::sregex_token_iterator piece(bare.begin(), bare.end(), separator, -1), end; piece != end; ++piece)
        if (std::regex_match(piece->first, piece->second, word)) words += (words.empty() ? "" : " ") + piece->str();
    return words;
}

/// What stands for the value in the help says whether it is a file. A description that begins with a small letter lists
/// the words that the value may be.
std::string kindOfValue(const std::string& name, const std::string& description) {
    const auto says = [&](const char* what) { return name.find(what) != std::string::npos; };
    std::string words;
    if (says("|")) words = wordsListed(name);
    if (!description.empty() && std::islower(static_cast<unsigned char>(description.front())))
        words = wordsListed(description);
    if (!words.empty()) return words;
    if (says("FICHERO")) return aFile;
    return says("CARPETA") || says("ORIGEN") || says("DESTINO") || says("COPIA") ? aFolder : aText;
}

/// Commands are in front of what can stand behind them, so those of one more word follow.
std::string namesBehind(const std::string& path, const std::vector<Command>& commands) {
    const std::string begin = path.empty() ? path : path + " ";
    std::string names;
    for (const Command& command : commands) {
        if (!command.path.starts_with(begin)) continue;
        const std::string name = command.path.substr(begin.size());
        if (name.find(' ') == std::string::npos) names += (names.empty() ? "" : " ") + name;
    }
    return names;
}

std::string commandBranch(const Command& command, const std::vector<Command>& commands) {
    std::string options, arguments;
    for (const CLI::Option* option : optionsIn(*command.app))
        for (const std::string& name : namesOf(*option))
            if (name.starts_with("--")) options += (options.empty() ? "" : " ") + name;
    for (const CLI::Option* argument : argumentsIn(*command.app))
        arguments +=
            (arguments.empty() ? "'" : " '") + kindOfValue(argument->get_name(), argument->get_description()) + "'";
    return "        '" + command.path + "')\n            commands='" + namesBehind(command.path, commands) +
           "'\n            options='" + options + "'\n            arguments=(" + arguments + ")\n            ;;\n";
}

std::vector<Command> withProgram(const CLI::App& program) {
    std::vector<Command> commands = commandsIn(program);
    commands.insert(commands.begin(), Command{"", &program});
    return commands;
}

}  // namespace

std::string completionCommands(const CLI::App& program) {
    std::string branches;
    for (const Command& command : withProgram(program)) branches += commandBranch(command, commandsIn(program));
    return branches;
}

std::string completionValues(const CLI::App& program) {
    std::string branches;
    for (const Command& command : withProgram(program)) {
        for (const CLI::Option* option : optionsIn(*command.app)) {
            if (!takesValue(*option)) continue;
            branches += "        '" + command.path + " " + namesOf(*option).front() + "') value='" +
                        kindOfValue(option->get_type_name(), option->get_description()) + "' ;;\n";
        }
    }
    return branches;
}

}  // namespace FendaMaestros::help
