#pragma once

#include <optional>
#include <string>

#include "app/Place.h"

namespace FendaMaestros::window {

/// As FendaMaestros::runMainWindow; built where there are windows.
int runMainWindow(const std::optional<Place>& chosen, const std::string& company);

}  // namespace FendaMaestros::window
