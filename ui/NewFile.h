#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace FendaMaestros {

/// Writes a text to a file that is not there yet, "subcuentas 2026-11-23 17.04.05.csv", in a folder that is made when
/// it is missing, and gives its path; both have the rights of keepPrivate() (ui/FileRights.h). A name that is taken
/// already gets a number behind it. Throws std::runtime_error with the reason, in Spanish, when it cannot be written;
/// then nothing of it is left.
std::string writeNewFile(const std::filesystem::path& folder, const std::string& name, const std::string& extension,
                         std::string_view text);

}  // namespace FendaMaestros
