#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace FendaMaestros {

/// A file on its way to take the place of another: it lies beside it under a name of its own, and goes away unless it
/// is committed.
class PartialFile {
public:
    /// Throws std::runtime_error, in Spanish, when nothing can be written at `target`, or a database is there.
    explicit PartialFile(const std::string& target);
    PartialFile(const PartialFile&) = delete;
    PartialFile& operator=(const PartialFile&) = delete;
    ~PartialFile();

    std::string path() const { return partial_.string(); }
    /// Makes it hold this text and nothing else. Throws as the constructor does.
    void write(std::string_view text);
    /// Replaces the target. Throws as the constructor does.
    void commit();

private:
    std::filesystem::path target_;
    std::filesystem::path partial_;
};

}  // namespace FendaMaestros
