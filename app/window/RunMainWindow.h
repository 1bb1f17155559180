#pragma once

#include <string>

#include "app/Place.h"

namespace FendaMaestros::window {

/// As FendaMaestros::runMainWindow; built where there are windows.
int runMainWindow(const Place& place, const std::string& company);

}  // namespace FendaMaestros::window
