#pragma once

#include <string>

namespace FendaMaestros {

/// The component's version as captions show it: major, minor and revision, "1.0.0".
std::string componentVersion();

}  // namespace FendaMaestros
