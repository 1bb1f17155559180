#pragma once

#include <filesystem>
#include <memory>
#include <string>

namespace FendaMaestros {

/// `fenda` without a command: the main window over a company of the folder, until the person leaves it. A folder
/// without companies gets the demonstration company. `company` is the one to open, the first when it is empty. Returns
/// 0. Throws std::exception, in Spanish, when there is no display or no company can be opened.
int runMainWindow(const std::filesystem::path& folder, const std::string& company);

/// Starts the windowing system, which ends with what is returned; a QtDesktop lives inside that time. Throws
/// std::runtime_error, in Spanish, when the program was built without windows or there is no display.
std::shared_ptr<void> openDisplay();

}  // namespace FendaMaestros
