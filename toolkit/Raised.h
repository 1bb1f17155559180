#pragma once

#include <utility>

namespace FendaMaestros {

/// Sets a flag for as long as it lives; then the flag is what it was before.
class Raised {
public:
    explicit Raised(bool& flag) : flag_(flag), found_(std::exchange(flag, true)) {}
    Raised(const Raised&) = delete;
    Raised& operator=(const Raised&) = delete;
    ~Raised() { flag_ = found_; }

private:
    bool& flag_;
    bool found_;
};

}  // namespace FendaMaestros
