#include "ui/NewFile.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <memory>
#include <stdexcept>
#include <system_error>

#include "ui/FileErrorText.h"
#include "ui/FileRights.h"

namespace FendaMaestros {

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

std::string momentText() {
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    const std::tm local = *std::localtime(&now);
    char digits[32];
    std::strftime(digits, sizeof digits, "%Y-%m-%d %H.%M.%S", &local);
    return digits;
}

[[noreturn]] void fail(const std::filesystem::path& path, std::error_code reason) {
    throw std::runtime_error("No se puede escribir " + path.string() + ": " + fileErrorText(reason) + ".");
}

std::error_code lastError() { return {errno, std::generic_category()}; }

bool written(File file, std::string_view text) {
    const bool all = std::fwrite(text.data(), 1, text.size(), file.get()) == text.size();
    return std::fclose(file.release()) == 0 && all;
}

}  // namespace

std::string writeNewFile(const std::filesystem::path& folder, const std::string& name, const std::string& extension,
                         std::string_view text) {
    std::error_code error;
    const bool made = std::filesystem::create_directories(folder, error);
    if (error) fail(folder, error);
    if (made) keepPrivate(folder, error);

    const std::string start = name + " " + momentText();
    for (int copy = 1;; ++copy) {
        const auto path = folder / (start + (copy == 1 ? "" : " (" + std::to_string(copy) + ")") + extension);
        errno = 0;
        File file(std::fopen(path.string().c_str(), "wbx"));
        if (!file && errno == EEXIST) continue;
        if (!file) fail(path, lastError());
        keepPrivate(path, error);
        if (written(std::move(file), text)) return path.string();
        const std::error_code reason = lastError();
        std::filesystem::remove(path, error);
        fail(path, reason);
    }
}

}  // namespace FendaMaestros
