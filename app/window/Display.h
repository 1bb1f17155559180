#pragma once

#include <memory>

#include "app/guion/GuionDesktop.h"

/// Built where there are windows.
namespace FendaMaestros::window {

/// Starts the windowing system, which ends with what is returned; a QtDesktop lives inside that time. Throws
/// std::runtime_error, in Spanish, when there is no display.
std::shared_ptr<void> openDisplay();

/// As FendaMaestros::windowDesktop.
GuionDesktop windowDesktop(Operator& person);

}  // namespace FendaMaestros::window
