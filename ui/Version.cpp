#include "ui/Version.h"

namespace FendaMaestros {

std::string versionComponente() { return FENDA_VERSION; }

}  // namespace FendaMaestros
