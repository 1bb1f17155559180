#include "platform/sqlite/Files.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <string_view>

#include "ui/FileErrorText.h"
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

/// As a clause that also fits what cannot be read.
std::string reasonOf(const std::error_code& error) {
    return error == std::errc::permission_denied ? "falta el permiso" : fileErrorText(error);
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

constexpr std::string_view partialStart = ".fenda-", partialEnd = ".parcial";

bool isPartial(const fs::path& path) {
    const std::string name = path.filename().string();
    return name.starts_with(partialStart) && name.ends_with(partialEnd) && fs::is_directory(path);
}

void removeLeftPartials(const fs::path& folder) {
    const NobodyCreates nobody(folder);
    if (!nobody.isSure()) return;
    std::error_code ignored;
    for (const auto& entry : fs::directory_iterator(folder, ignored))
        if (isPartial(entry.path())) fs::remove_all(entry.path(), ignored);
}

[[noreturn]] void failOnTaken(const fs::path& target) {
    throw ErrorBd(Kind::Constraint,
                  "En " + guillemets(target.string()) + " ya hay algo, que no se sobrescribe. Indique otra carpeta.");
}

/// A file, or what a folder consists of, reaches the disk.
void synchronize(const fs::path& path) {
    const int handle = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const bool done = handle >= 0 && ::fsync(handle) == 0;
    const std::error_code error(errno, std::generic_category());
    if (handle >= 0) ::close(handle);
    if (!done) failOn("No se puede escribir", path, error);
}

}  // namespace

std::string guillemets(const std::string& text) { return "«" + text + "»"; }

void failOn(const std::string& failure, const fs::path& path, const std::error_code& error) {
    throw ErrorBd(kindOf(error), failure + " " + guillemets(path.string()) + ": " + reasonOf(error) + ".",
                  error.value(), error.message());
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

PartialFolder::PartialFolder(const fs::path& target) {
    std::error_code error;
    target_ = fs::weakly_canonical(fs::absolute(target), error);
    if (error) failOn("No se puede crear la carpeta", target, error);
    if (!target_.has_filename()) target_ = target_.parent_path();
    if (isThere(target_) && !(fs::is_directory(target_, error) && fs::is_empty(target_, error))) failOnTaken(target_);
    const fs::path above = target_.parent_path();
    createPrivateFolder(above, error);
    if (error) failOn("No se puede crear la carpeta", above, error);
    removeLeftPartials(above);
    making_.emplace(above);
    const fs::path partial = above / (std::string(partialStart) + std::to_string(::getpid()) + std::string(partialEnd));
    createPrivateFolder(partial, error);
    if (error) failOn("No se puede escribir en la carpeta", above, error);
    partial_ = partial;
    if (!isThere(target_)) return;
    giveToGroupOf(target_, partial_);
    fs::permissions(partial_, fs::status(target_).permissions(), error);
}

PartialFolder::~PartialFolder() {
    std::error_code ignored;
    if (!partial_.empty()) fs::remove_all(partial_, ignored);
}

void PartialFolder::commit() {
    for (const auto& entry : fs::directory_iterator(partial_)) synchronize(entry.path());
    synchronize(partial_);
    std::error_code error;
    fs::rename(partial_, target_, error);
    if (error == std::errc::directory_not_empty || error == std::errc::file_exists) failOnTaken(target_);
    if (error) failOn("No se puede escribir la carpeta", target_, error);
    partial_.clear();
    synchronize(target_.parent_path());
}

}  // namespace FendaMaestros::sqlite
