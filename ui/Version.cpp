#include "ui/Version.h"

namespace FendaMaestros {

std::string componentVersion() { return FENDA_VERSION; }

}  // namespace FendaMaestros
