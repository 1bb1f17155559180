#pragma once

#include <filesystem>
#include <string>

namespace FendaMaestros::window {

/// As FendaMaestros::runMainWindow; built where there are windows.
int runMainWindow(const std::filesystem::path& folder, const std::string& company);

}  // namespace FendaMaestros::window
