#include "platform/sqlite/CreationLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace FendaMaestros::sqlite {

namespace {

int openFolder(const std::filesystem::path& folder) {
    return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

void closeFolder(int folder) {
    if (folder >= 0) ::close(folder);
}

}  // namespace

CreationLock::CreationLock(const std::filesystem::path& folder) : folder_(openFolder(folder)) {
    if (folder_ >= 0) ::flock(folder_, LOCK_SH);
}

CreationLock::~CreationLock() { closeFolder(folder_); }

NobodyCreates::NobodyCreates(const std::filesystem::path& folder)
    : folder_(openFolder(folder)), sure_(folder_ >= 0 && ::flock(folder_, LOCK_EX | LOCK_NB) == 0) {}

NobodyCreates::~NobodyCreates() { closeFolder(folder_); }

}  // namespace FendaMaestros::sqlite
