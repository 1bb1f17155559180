#pragma once

#include <cstdint>
#include <string_view>

namespace FendaMaestros {

/// A line on standard error that each report writes over, and that goes with this object; nothing where that is no
/// terminal.
class ProgressLine {
public:
    ProgressLine();
    ProgressLine(const ProgressLine&) = delete;
    ProgressLine& operator=(const ProgressLine&) = delete;
    ~ProgressLine();

    void show(std::string_view what, std::int64_t rows) const;

private:
    const bool seen_;
};

}  // namespace FendaMaestros
