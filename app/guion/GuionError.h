#pragma once

#include <string>

namespace FendaMaestros {

/// A line of a script that cannot be carried out, and why, in Spanish. Not a std::exception, so that no screen that
/// handles errors takes it for one of its own.
struct GuionError {
    /// 0: the one that is being carried out.
    int line = 0;
    std::string reason;
};

namespace guion {

/// Throws GuionError for the line that is being carried out.
[[noreturn]] inline void fail(const std::string& reason) { throw GuionError{0, reason}; }

}  // namespace guion

}  // namespace FendaMaestros
