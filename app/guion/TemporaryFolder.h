#pragma once

#include <filesystem>

namespace FendaMaestros {

/// A folder that lasts as long as this object, with what is put into it. One whose program was killed goes when the
/// next is made. A shared lock on the folder, which ends with its program, tells those in use.
class TemporaryFolder {
public:
    /// Throws std::runtime_error, in Spanish.
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    const std::filesystem::path& path() const { return path_; }

private:
    /// Makes a folder and locks it; false when somebody took it for a leftover in between.
    bool make(const std::filesystem::path& parent);

    std::filesystem::path path_;
    int lock_ = -1;
};

}  // namespace FendaMaestros
