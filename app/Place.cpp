#include "app/Place.h"

#include <cstdlib>
#include <stdexcept>

namespace FendaMaestros {

namespace {

std::string environment(const char* variable) {
    const char* value = std::getenv(variable);
    return value ? value : "";
}

bool isConnection(const std::string& argument) {
    if (argument.starts_with("postgresql://") || argument.starts_with("postgres://")) return true;
    const std::size_t key = argument.find_first_not_of("abcdefghijklmnopqrstuvwxyz_");
    return key != std::string::npos && key > 0 && argument[key] == '=';
}

}  // namespace

std::filesystem::path ownDataFolder() {
    // A relative path there is to be ignored, as the XDG rules for base directories say.
    const std::filesystem::path data = environment("XDG_DATA_HOME");
    if (data.is_absolute()) return data / "fenda";
    const std::string home = environment("HOME");
    if (home.empty()) throw std::runtime_error("No hay carpeta de usuario; indique la de datos con --carpeta.");
    return std::filesystem::path(home) / ".local" / "share" / "fenda";
}

std::optional<Place> chosenPlace(const TypedPlace& typed) {
    if (!typed.folder.empty() && !typed.server.empty())
        throw std::invalid_argument("Las empresas están en una carpeta o en un servidor: solo se puede indicar uno.");
    if (!typed.server.empty()) return Place{Place::Kind::Server, typed.server};
    if (!typed.folder.empty()) return Place{Place::Kind::Folder, typed.folder};
    if (const std::string server = environment("FENDA_SERVIDOR"); !server.empty())
        return Place{Place::Kind::Server, server};
    if (const std::string folder = environment("FENDA_CARPETA"); !folder.empty())
        return Place{Place::Kind::Folder, folder};
    return std::nullopt;
}

Place placeOfCompanies(const TypedPlace& typed) {
    if (const auto chosen = chosenPlace(typed)) return *chosen;
    return {Place::Kind::Folder, ownDataFolder()};
}

Place readPlace(const std::string& argument) {
    return {isConnection(argument) ? Place::Kind::Server : Place::Kind::Folder, argument};
}

std::string nameOf(const Place& place) {
    return place.kind == Place::Kind::Server ? "el servidor" : "la carpeta " + place.where;
}

}  // namespace FendaMaestros
