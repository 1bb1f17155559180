#pragma once

#include <string>

namespace CLI {
class App;
}

namespace FendaMaestros::help {

/// The options of the program itself, as paragraphs of a man page.
std::string manualOptions(const CLI::App& program);

/// Every command with its arguments and options, as subsections of a man page.
std::string manualCommands(const CLI::App& program);

/// What may be typed behind each command, as branches of a bash `case` on "$command": they set `commands`, `options`
/// and `arguments`. A kind of value is `<fichero>`, `<carpeta>`, `<texto>`, or the words that it may be.
std::string completionCommands(const CLI::App& program);

/// The kind of value that each option takes, as branches of a bash `case` on "$command $1": they set `value`. A flag
/// has no branch.
std::string completionValues(const CLI::App& program);

}  // namespace FendaMaestros::help
