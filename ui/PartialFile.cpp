#include "ui/PartialFile.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <random>
#include <stdexcept>
#include <system_error>

#include "ui/FileErrorText.h"

namespace FendaMaestros {

namespace fs = std::filesystem;

namespace {

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

[[noreturn]] void fail(const fs::path& target, const std::string& reason) {
    throw std::runtime_error("No se puede guardar \"" + target.string() + "\": " + reason + ".");
}

[[noreturn]] void fail(const fs::path& target, std::error_code code) { fail(target, fileErrorText(code)); }

[[noreturn]] void failOnErrno(const fs::path& target) { fail(target, {errno, std::generic_category()}); }

/// By the header of SQLite's database files: a company may be in it.
bool isDatabase(std::FILE& file) {
    constexpr std::string_view header("SQLite format 3\0", 16);
    std::array<char, header.size()> begin{};
    return std::fread(begin.data(), 1, begin.size(), &file) == begin.size() &&
           std::string_view(begin.data(), begin.size()) == header;
}

}  // namespace

PartialFile::PartialFile(const std::string& target) {
    std::error_code code;
    target_ = fs::weakly_canonical(target, code);  // a link stays, and what it points to is replaced
    if (code) fail(target, code);
    const fs::file_status there = fs::status(target_, code);
    if (fs::is_directory(there)) fail(target_, std::make_error_code(std::errc::is_a_directory));
    if (fs::exists(there) && !fs::is_regular_file(there)) fail(target_, "no es un fichero normal");
    if (fs::exists(there)) {
        const File replaced(std::fopen(target_.string().c_str(), "r+b"));
        if (!replaced) failOnErrno(target_);
        if (isDatabase(*replaced)) fail(target_, "es una base de datos, y no se escribe encima");
    }

    const fs::path partial = target_.parent_path() / (".fenda-" + std::to_string(std::random_device()()) + ".parcial");
    if (!File(std::fopen(partial.string().c_str(), "wbx"))) failOnErrno(target_);
    partial_ = partial;
}

PartialFile::~PartialFile() {
    std::error_code ignored;
    if (!partial_.empty()) fs::remove(partial_, ignored);
}

void PartialFile::write(std::string_view text) {
    errno = 0;
    File file(std::fopen(partial_.string().c_str(), "wb"));
    if (!file || std::fwrite(text.data(), 1, text.size(), file.get()) != text.size() ||
        std::fclose(file.release()) != 0)
        failOnErrno(target_);
}

void PartialFile::commit() {
    std::error_code code;
    fs::rename(partial_, target_, code);
    if (code) fail(target_, code);
    partial_.clear();
}

}  // namespace FendaMaestros
