#pragma once

#include <filesystem>
#include <string>

namespace FendaMaestros {

/// `fenda` without a command: the main window over a company of the folder, until the person leaves it. A folder
/// without companies gets the demonstration company. `company` is the one to open, the first when it is empty. Returns
/// 0. Throws std::exception, in Spanish, when there is no display or no company can be opened.
int runMainWindow(const std::filesystem::path& folder, const std::string& company);

}  // namespace FendaMaestros
