#pragma once

#include <filesystem>

/// What is made in a folder under a name that is not the final one: how others know that it is still being made.
namespace FendaMaestros::sqlite {

/// Held while something is being made in a folder. It goes with the program, however that ends.
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

/// While it lives and is sure, nobody is making anything in the folder, and who wants to waits.
class NobodyCreates {
public:
    explicit NobodyCreates(const std::filesystem::path& folder);
    NobodyCreates(const NobodyCreates&) = delete;
    NobodyCreates& operator=(const NobodyCreates&) = delete;
    ~NobodyCreates();

    bool isSure() const { return sure_; }

private:
    int folder_;
    bool sure_;
};

}  // namespace FendaMaestros::sqlite
