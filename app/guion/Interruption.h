#pragma once

namespace FendaMaestros {

/// While one lives, the signals with which a program is ended only leave word here the first time, so that what is
/// under way ends in order, and a broken pipe is a write that fails. At most one at a time.
class Interruption {
public:
    Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;
    ~Interruption();

    /// Whether the program has been asked to end.
    static bool asked();
};

}  // namespace FendaMaestros
