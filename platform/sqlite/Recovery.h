#pragma once

#include <filesystem>

#include "session/Companies.h"

/// Programs that end in the middle of something, and what they leave in a data folder.
namespace FendaMaestros::sqlite {

/// The name under which this program makes a database before it is given its own.
std::filesystem::path asideOf(const std::filesystem::path& file);

/// Undoes the transactions that were cut off, checks the databases concerned quickly, and removes files that nobody
/// needs: databases that were being made, and journals of transactions over two databases. `tell` is told of each
/// database that is damaged. What cannot be done now, because others work with it or there is no right, stays for
/// another time.
void recover(const std::filesystem::path& folder, const Companies::Tell& tell);

}  // namespace FendaMaestros::sqlite
