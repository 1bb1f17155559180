#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <system_error>

#include "platform/sqlite/CreationLock.h"
#include "session/ErrorBd.h"

/// What a data folder does with its files besides opening them as databases. Every failure is an ErrorBd.
namespace FendaMaestros::sqlite {

std::string guillemets(const std::string& text);

/// Carries out `work`; its error says first what could not be done.
template <class Work>
auto saying(const std::string& failure, Work&& work) {
    try {
        return work();
    } catch (const ErrorBd& error) {
        throw ErrorBd(error.kind(), failure + ": " + error.what(), error.nativeCode(), error.nativeText());
    }
}

/// Throws what the system refused: `failure`, such as "No se puede leer la carpeta", the path and the reason.
[[noreturn]] void failOn(const std::string& failure, const std::filesystem::path& path, const std::error_code& error);

bool isThere(const std::filesystem::path& file);

/// The name of the group that a file or folder belongs to; its number when it has no name.
std::string groupOf(const std::filesystem::path& path);

/// Makes or empties a file, for its owner and the group of a shared folder. `target` is the name that it is to have
/// when it is finished, and the one that an error tells.
void createEmptyFile(const std::filesystem::path& file, const std::filesystem::path& target);

/// Gives a finished file its name. False when another one has the name already, which then stays as it is.
bool publish(const std::filesystem::path& aside, const std::filesystem::path& file);

/// A folder on its way to its name: it lies beside it under another one, and goes away unless it is committed.
class PartialFolder {
public:
    /// Makes the folders above `target` where they are missing, and removes what programs left there that ended in the
    /// middle. Throws (Constraint) when there is something at `target` already; an empty folder stays with its rights.
    explicit PartialFolder(const std::filesystem::path& target);
    PartialFolder(const PartialFolder&) = delete;
    PartialFolder& operator=(const PartialFolder&) = delete;
    ~PartialFolder();

    const std::filesystem::path& path() const { return partial_; }
    /// Gives it its name when all its files have reached the disk.
    void commit();

private:
    std::filesystem::path target_;
    std::filesystem::path partial_;
    std::optional<CreationLock> making_;
};

}  // namespace FendaMaestros::sqlite
