#include <CLI/CLI.hpp>

#include "app/help/CommandTree.h"
#include "app/help/HelpTexts.h"

namespace FendaMaestros::help {

namespace {

/// A text as it is, whatever the page's language makes of its signs.
std::string plain(const std::string& text) {
    std::string page;
    for (const char letter : text) {
        if (letter == '\\')
            page += "\\e";
        else if (letter == '-')
            page += "\\-";
        else if (letter == '\'')
            page += "\\(aq";
        else if (letter == '~')
            page += "\\(ti";
        else if (letter == '^')
            page += "\\(ha";
        else if (letter == '.' && (page.empty() || page.back() == '\n'))
            page += "\\&.";
        else
            page += letter;
    }
    return page;
}

std::string bold(const std::string& text) { return "\\fB" + plain(text) + "\\fR"; }
std::string italic(const std::string& text) { return "\\fI" + plain(text) + "\\fR"; }

std::string paragraph(const std::string& head, const std::string& text) {
    return ".TP\n" + head + "\n" + plain(text) + (text.ends_with('.') ? "" : ".") + "\n";
}

std::string heading(const CLI::Option& option) {
    std::string names;
    for (const std::string& name : namesOf(option)) names += (names.empty() ? "" : ", ") + bold(name);
    return takesValue(option) ? names + " " + italic(option.get_type_name()) : names;
}

std::string optionsOf(const CLI::App& command) {
    std::string page;
    for (const CLI::Option* option : optionsIn(command)) page += paragraph(heading(*option), option->get_description());
    return page;
}

std::string subsection(const Command& command) {
    const CLI::App& app = *command.app;
    std::string page = ".SS " + bold("fenda " + command.path);
    for (const CLI::Option* argument : argumentsIn(app)) page += " " + italic(argument->get_name());
    page += "\n" + plain(app.get_description()) + ".\n";
    for (const CLI::Option* argument : argumentsIn(app))
        page += paragraph(italic(argument->get_name()), argument->get_description());
    page += optionsOf(app);
    if (!app.get_footer().empty()) page += ".PP\n" + plain(app.get_footer()) + "\n";
    return page;
}

}  // namespace

std::string manualOptions(const CLI::App& program) { return optionsOf(program); }

std::string manualCommands(const CLI::App& program) {
    std::string page;
    for (const Command& command : commandsIn(program)) page += subsection(command);
    return page;
}

}  // namespace FendaMaestros::help
