#include "ui/FileRights.h"

namespace FendaMaestros {

namespace fs = std::filesystem;

namespace {

constexpr fs::perms ofOthers(fs::perms ofGroup) { return static_cast<fs::perms>(static_cast<unsigned>(ofGroup) >> 3); }

fs::perms rightsOf(const fs::path& path) {
    std::error_code ignored;
    return fs::status(path, ignored).permissions();
}

/// What the group of a shared folder may do in it; nothing in any other.
fs::perms groupRightsIn(const fs::path& folder) {
    const fs::perms rights = rightsOf(folder), group = rights & fs::perms::group_all;
    const bool more = (ofOthers(group) & ~rights) != fs::perms::none;
    return more ? group : fs::perms::none;
}

}  // namespace

bool isShared(const fs::path& folder) { return groupRightsIn(folder) != fs::perms::none; }

void keepPrivate(const fs::path& created, std::error_code& error) {
    constexpr auto executable = fs::perms::owner_exec | fs::perms::group_exec;
    fs::perms rights = fs::perms::owner_all | groupRightsIn(created.parent_path());
    rights =
        fs::is_directory(created, error) ? rights | (rightsOf(created) & fs::perms::set_gid) : rights & ~executable;
    fs::permissions(created, rights, error);
}

void createPrivateFolder(const fs::path& folder, std::error_code& error) {
    std::error_code missing;
    if (const auto above = folder.parent_path(); !above.empty() && above != folder && !fs::exists(above, missing))
        createPrivateFolder(above, error);
    if (fs::create_directory(folder, error))
        fs::permissions(folder, fs::perms::group_all | fs::perms::others_all, fs::perm_options::remove, error);
}

}  // namespace FendaMaestros
