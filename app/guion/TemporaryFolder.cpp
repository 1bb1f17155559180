#include "app/guion/TemporaryFolder.h"

#include <fcntl.h>
#include <stdlib.h>
#include <sys/file.h>
#include <unistd.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace FendaMaestros {

namespace fs = std::filesystem;

namespace {

/// Earlier programs had another beginning of the name, and no lock: what may be theirs stays.
constexpr std::string_view pattern = "fenda-guion.XXXXXX";
constexpr std::string_view beginning = pattern.substr(0, pattern.find('X'));

/// -1 for what is no folder, or another person's.
int openFolder(const fs::path& folder) {
    return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
}

void closeFolder(int folder) {
    if (folder >= 0) ::close(folder);
}

void removeUnlessInUse(const fs::path& folder) {
    const int lock = openFolder(folder);
    std::error_code ignored;
    if (lock >= 0 && ::flock(lock, LOCK_EX | LOCK_NB) == 0) fs::remove_all(folder, ignored);
    closeFolder(lock);
}

void removeLeftovers(const fs::path& parent) {
    std::vector<fs::path> candidates;
    std::error_code error;
    for (fs::directory_iterator entry(parent, error), last; !error && entry != last; entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.starts_with(beginning) && name.size() == pattern.size()) candidates.push_back(entry->path());
    }
    for (const fs::path& folder : candidates) removeUnlessInUse(folder);
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
    std::error_code missing;
    const fs::path parent = fs::temp_directory_path(missing);
    if (missing) throw std::runtime_error("La carpeta temporal que dice TMPDIR no existe.");
    removeLeftovers(parent);
    while (!make(parent)) {
    }
}

bool TemporaryFolder::make(const fs::path& parent) {
    std::string name = (parent / pattern).string();
    if (!mkdtemp(name.data())) throw std::runtime_error("No se puede crear una carpeta de trabajo en " + name + ".");
    path_ = name;
    lock_ = openFolder(path_);
    if (lock_ >= 0) ::flock(lock_, LOCK_SH);
    if (fs::exists(path_)) return true;
    closeFolder(lock_);
    return false;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
    closeFolder(lock_);
}

}  // namespace FendaMaestros
