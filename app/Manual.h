#pragma once

#include <filesystem>
#include <optional>

namespace FendaMaestros {

/// The first page of the user manual, from the folder of an installation or of the sources.
inline constexpr const char* installedManual = "share/doc/fenda/manual/index.html";
inline constexpr const char* builtManual = "build/manual/index.html";

/// That of the program in this folder: what is installed beside it or, in a tree of sources, what has been made there.
/// Nothing when there is none.
std::optional<std::filesystem::path> findManual(const std::filesystem::path& programFolder);

}  // namespace FendaMaestros
