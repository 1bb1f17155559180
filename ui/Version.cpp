#include "ui/Version.h"

namespace FendaMaestros {

// CMake reads the version of the project from here.
std::string componentVersion() { return "1.0.0"; }

}  // namespace FendaMaestros
