#pragma once

#include <memory>

namespace FendaMaestros {

/// Starts the windowing system, which ends with what is returned; a QtDesktop lives inside that time. Throws
/// std::runtime_error, in Spanish, when the program was built without windows or there is no display.
std::shared_ptr<void> openDisplay();

}  // namespace FendaMaestros
