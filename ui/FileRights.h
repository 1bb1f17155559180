#pragma once

#include <filesystem>
#include <system_error>

namespace FendaMaestros {

/// Whether a folder is shared with its group: the group may do in it what others may not.
bool isShared(const std::filesystem::path& folder);

/// Leaves a file or folder that has just been created to its owner and, in a folder that is shared, to the group with
/// the rights that it has there.
void keepPrivate(const std::filesystem::path& created, std::error_code& error);

/// Makes a folder, with those above it that are missing, for its owner alone. One that is there stays as it is.
void createPrivateFolder(const std::filesystem::path& folder, std::error_code& error);

}  // namespace FendaMaestros
