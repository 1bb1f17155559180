#pragma once

#include <gtest/gtest.h>

#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "app/CommandLine.h"

namespace FendaMaestros::testing {

/// What a run of the program gave.
struct Ran {
    int status = 0;
    std::string out;
    std::string err;
};

inline Ran fenda(std::vector<std::string> words) {
    words.insert(words.begin(), "fenda");
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    ::testing::internal::CaptureStdout();
    ::testing::internal::CaptureStderr();
    Ran ran;
    ran.status = runCommandLine(static_cast<int>(arguments.size()), arguments.data());
    ran.out = ::testing::internal::GetCapturedStdout();
    ran.err = ::testing::internal::GetCapturedStderr();
    return ran;
}

/// A folder of its own, which need not be there yet and goes at the end.
struct OwnFolder {
    std::filesystem::path path =
        std::filesystem::temp_directory_path() / ("fenda-pruebas-" + std::to_string(::getpid()));

    OwnFolder() = default;
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;
    ~OwnFolder() { std::filesystem::remove_all(path); }
};

}  // namespace FendaMaestros::testing
