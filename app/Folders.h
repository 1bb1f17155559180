#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace FendaMaestros {

/// The data folder that a person has chosen: with an option (empty when not given) or else with the environment
/// variable FENDA_CARPETA. Nothing when with neither.
std::optional<std::filesystem::path> chosenDataFolder(const std::string& option);

/// The chosen one, or else the user's own: "fenda" in XDG_DATA_HOME, which stands for ~/.local/share. Throws
/// std::runtime_error, in Spanish, when there is no home to put it in.
std::filesystem::path dataFolder(const std::string& option);

}  // namespace FendaMaestros
