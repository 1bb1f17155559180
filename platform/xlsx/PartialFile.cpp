#include "platform/xlsx/PartialFile.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <stdexcept>
#include <system_error>

#include "ui/FileErrorText.h"

namespace FendaMaestros {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void fail(const fs::path& target, std::error_code code) {
    throw std::runtime_error("No se puede guardar \"" + target.string() + "\": " + fileErrorText(code) + ".");
}

[[noreturn]] void failOnErrno(const fs::path& target) { fail(target, {errno, std::generic_category()}); }

}  // namespace

PartialFile::PartialFile(const std::string& target) {
    std::error_code code;
    target_ = fs::weakly_canonical(target, code);  // a link stays, and what it points to is replaced
    if (code) fail(target, code);
    if (fs::is_directory(target_, code)) fail(target_, std::make_error_code(std::errc::is_a_directory));
    if (fs::exists(target_, code) && ::access(target_.c_str(), W_OK) != 0) failOnErrno(target_);
    if (code) fail(target_, code);

    const fs::path partial = target_.parent_path() / (".fenda-" + std::to_string(::getpid()) + ".parcial");
    std::FILE* file = std::fopen(partial.c_str(), "wb");
    if (!file) failOnErrno(target_);
    std::fclose(file);
    partial_ = partial;
}

PartialFile::~PartialFile() {
    std::error_code ignored;
    if (!partial_.empty()) fs::remove(partial_, ignored);
}

void PartialFile::commit() {
    std::error_code code;
    fs::rename(partial_, target_, code);
    if (code) fail(target_, code);
    partial_.clear();
}

}  // namespace FendaMaestros
