#pragma once

#include <filesystem>

#include "session/Companies.h"

/// Programs that end in the middle of something, and what they leave in a data folder.
namespace FendaMaestros::sqlite {

/// Held by a program while it makes something in a folder under a name that is not the final one: as long as it lives,
/// nobody takes that for a leftover. It goes with the program, however that ends.
class CreationLock {
public:
    /// Waits while another program removes leftovers. A file system without such locks gives none.
    explicit CreationLock(const std::filesystem::path& folder);
    CreationLock(const CreationLock&) = delete;
    CreationLock& operator=(const CreationLock&) = delete;
    ~CreationLock();

private:
    int folder_;
};

/// The name under which this program makes a database before it is given its own.
std::filesystem::path asideOf(const std::filesystem::path& file);

/// Undoes the transactions that were cut off, checks the databases concerned quickly, and removes files that nobody
/// needs: databases that were being made, and journals of transactions over two databases. `tell` is told of each
/// database that is damaged. What cannot be done now, because others work with it or there is no right, stays for
/// another time.
void recover(const std::filesystem::path& folder, const Companies::Tell& tell);

}  // namespace FendaMaestros::sqlite
