#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace FendaMaestros {

/// Where companies are kept: a data folder of this machine, or a database of a server.
struct Place {
    enum class Kind { Folder, Server };
    Kind kind = Kind::Folder;
    /// The folder's path, or the server's connection: "clave=valor ..." or "postgresql://...", which may hold a
    /// password and is therefore never shown.
    std::string where;

    bool operator==(const Place&) const = default;
};

/// A place as the options of a command name it; at most one of both is given, the other is empty.
struct TypedPlace {
    std::string folder;
    std::string server;
};

/// The place that a person has chosen: with an option, or else with the environment variable FENDA_SERVIDOR or, without
/// that, FENDA_CARPETA. Nothing when with none. Throws std::invalid_argument, in Spanish, when both options are given.
std::optional<Place> chosenPlace(const TypedPlace& typed);

/// The user's own folder: "fenda" in XDG_DATA_HOME, which stands for ~/.local/share. Throws std::runtime_error, in
/// Spanish, when there is no home to put it in.
std::filesystem::path ownDataFolder();

/// The chosen one, or else the user's own folder. Throws as both.
Place placeOfCompanies(const TypedPlace& typed);

/// A path as a person types it in a window: blanks around it go, and "~/" stands for the user's home as in a shell.
std::string typedPath(const std::string& typed);

/// One argument that may name either: a server when it begins as a connection does ("postgresql://", "postgres://" or
/// "clave="), a folder otherwise.
Place readPlace(const std::string& argument);

/// The same place, whatever folder the program is started in, and without what is secret in a connection: what may be
/// kept for the next start. `where` is empty when secrets cannot be told from the rest.
Place withoutSecrets(const Place& place);

/// Behind "en": "la carpeta /datos/fenda" or "el servidor".
std::string nameOf(const Place& place);

}  // namespace FendaMaestros
