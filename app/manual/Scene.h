#pragma once

#include <filesystem>
#include <string>

#include "app/manual/Picture.h"

namespace FendaMaestros::manual {

/// What a picture of the manual is made of: a script (docs/guion.md) in the demonstration company that may also say
///   menú "TEXTO"          chooses an entry of the main window's menus, by what is read there
///   primer inicio         starts the program where there is no company yet
///   foto [menú "TEXTO"]   takes the picture, once: the screen on top or, without one, the main window, with a menu
///   open
/// Files of the folder of examples are in the folder that it works in. It is always the same day.
class Scene {
public:
    /// Throws std::runtime_error, in Spanish, when the file cannot be read.
    explicit Scene(const std::filesystem::path& file);

    const std::string& text() const { return text_; }
    /// Plays it on windows. Throws GuionError for a line that is not understood or cannot be carried out, and when no
    /// picture has been taken.
    Picture play(const std::filesystem::path& examples) const;

private:
    std::string text_;
};

}  // namespace FendaMaestros::manual
