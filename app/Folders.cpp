#include "app/Folders.h"

#include <cstdlib>
#include <stdexcept>

namespace FendaMaestros {

namespace {

std::string environment(const char* variable) {
    const char* value = std::getenv(variable);
    return value ? value : "";
}

}  // namespace

std::optional<std::filesystem::path> chosenDataFolder(const std::string& option) {
    const std::string chosen = option.empty() ? environment("FENDA_CARPETA") : option;
    if (chosen.empty()) return std::nullopt;
    return chosen;
}

std::filesystem::path dataFolder(const std::string& option) {
    if (const auto chosen = chosenDataFolder(option)) return *chosen;
    // A relative path there is to be ignored, as the XDG rules for base directories say.
    const std::filesystem::path data = environment("XDG_DATA_HOME");
    if (data.is_absolute()) return data / "fenda";
    const std::string home = environment("HOME");
    if (home.empty()) throw std::runtime_error("No hay carpeta de usuario; indique la de datos con --carpeta.");
    return std::filesystem::path(home) / ".local" / "share" / "fenda";
}

}  // namespace FendaMaestros
