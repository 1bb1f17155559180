#pragma once

#include <functional>

namespace CLI {
class App;
}

namespace FendaMaestros {

/// The program: reads what it was asked for and does it. Says what went wrong in one Spanish line on standard error and
/// never throws. Returns the exit status: 0 done, 1 it failed (for `nif`: an identifier is not valid; for `verificar`
/// and `revisar`: something was found), 2 the command line was not understood (for those that list or check: or they
/// failed).
int runCommandLine(int argc, char** argv);

/// Hands over the commands and options that the program understands, for `read` to look at and for no longer.
void readCommandLine(const std::function<void(const CLI::App& program)>& read);

}  // namespace FendaMaestros
