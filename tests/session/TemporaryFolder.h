#pragma once

#include <stdlib.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace FendaMaestros::tests {

/// An empty folder that goes with this object, with all that was put into it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "fendaXXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no folder");
        path_ = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all);
        std::filesystem::remove_all(path_);
    }

    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

}  // namespace FendaMaestros::tests
