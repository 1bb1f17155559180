#pragma once

#include <chrono>
#include <filesystem>
#include <vector>

#include "platform/sqlite/Database.h"

namespace FendaMaestros::sqlite {

/// Copies databases, as they all are at one moment, into a folder; the copies are not yet safe on the disk. Meanwhile
/// everybody may read them, and who wants to keep a change waits, for as long as is returned. Programs that keep
/// changes in two of them lock the one that comes first in `files` first. Waits up to `timeout` for each. Throws
/// ErrorBd.
std::chrono::milliseconds copyDatabases(const std::vector<std::filesystem::path>& files,
                                        const std::filesystem::path& folder, std::chrono::milliseconds timeout);

/// A copy of a database that goes with what is returned, so that nobody waits for what is done with it. Else as above.
Database temporaryCopy(const std::filesystem::path& file, std::chrono::milliseconds timeout);

}  // namespace FendaMaestros::sqlite
