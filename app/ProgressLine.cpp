#include "app/ProgressLine.h"

#include <unistd.h>

#include <cstdio>

namespace FendaMaestros {

ProgressLine::ProgressLine() : seen_(::isatty(STDERR_FILENO) != 0) {}

ProgressLine::~ProgressLine() {
    if (seen_) std::fputs("\r\033[K", stderr);
}

void ProgressLine::show(std::string_view what, std::int64_t rows) const {
    if (seen_)
        std::fprintf(stderr, "\r\033[K%.*s: %lld", static_cast<int>(what.size()), what.data(),
                     static_cast<long long>(rows));
}

}  // namespace FendaMaestros
