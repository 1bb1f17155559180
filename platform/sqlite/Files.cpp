#include "platform/sqlite/Files.h"

#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "session/ErrorBd.h"
#include "ui/FileRights.h"

namespace FendaMaestros::sqlite {

namespace fs = std::filesystem;

namespace {

using Kind = ErrorBd::Kind;

Kind kindOf(const std::error_code& error) {
    if (error == std::errc::permission_denied || error == std::errc::operation_not_permitted ||
        error == std::errc::read_only_file_system)
        return Kind::ReadOnly;
    return error == std::errc::no_space_on_device ? Kind::Full : Kind::Other;
}

using Status = struct stat;

/// All zeros when it cannot be read.
Status statusOf(const fs::path& path) {
    Status status{};
    return ::stat(path.c_str(), &status) == 0 ? status : Status{};
}

/// Also in a folder that does not hand its group on. False when the file stays with another group.
bool giveToGroupOf(const fs::path& folder, const fs::path& file) {
    const gid_t group = statusOf(folder).st_gid;
    return statusOf(file).st_gid == group || ::chown(file.c_str(), static_cast<uid_t>(-1), group) == 0;
}

}  // namespace

std::string guillemets(const std::string& text) { return "«" + text + "»"; }

void failOn(const std::string& failure, const fs::path& path, const std::error_code& error) {
    throw ErrorBd(kindOf(error), failure + " " + guillemets(path.string()), error.value(), error.message());
}

bool isThere(const fs::path& file) {
    std::error_code error;
    const bool there = fs::exists(file, error);
    if (error) failOn("No se puede leer", file, error);
    return there;
}

std::string groupOf(const fs::path& path) {
    const gid_t id = statusOf(path).st_gid;
    const auto* const group = ::getgrgid(id);
    return group ? group->gr_name : std::to_string(id);
}

void createEmptyFile(const fs::path& file, const fs::path& target) {
    // The engine does not say why it cannot create a file; the system does.
    auto* const handle = std::fopen(file.string().c_str(), "wb");
    if (!handle) failOn("No se puede escribir el fichero", target, {errno, std::generic_category()});
    std::fclose(handle);
    std::error_code ignored;
    const bool shared = isShared(file.parent_path()) && giveToGroupOf(file.parent_path(), file);
    keepPrivate(file, ignored);
    if (!shared) fs::permissions(file, fs::perms::group_all, fs::perm_options::remove, ignored);
}

bool publish(const fs::path& aside, const fs::path& file) {
    std::error_code error, ignored;
    fs::create_hard_link(aside, file, error);
    const bool taken = error == std::errc::file_exists || (error && fs::exists(file, ignored));
    if (error && !taken) fs::rename(aside, file, error);  // a file system without links
    fs::remove(aside, ignored);
    if (error && !taken) failOn("No se puede crear el fichero", file, error);
    return !taken;
}

}  // namespace FendaMaestros::sqlite
