#include "app/Manual.h"

namespace FendaMaestros {

std::optional<std::filesystem::path> findManual(const std::filesystem::path& programFolder) {
    namespace fs = std::filesystem;
    const auto isThere = [](const fs::path& page) {
        std::error_code ignored;
        return fs::is_regular_file(page, ignored);
    };
    if (const fs::path page = programFolder.parent_path() / installedManual; isThere(page)) return page;
    for (fs::path above = programFolder; above.has_relative_path(); above = above.parent_path())
        if (const fs::path page = above / builtManual; isThere(page)) return page;
    return std::nullopt;
}

}  // namespace FendaMaestros
