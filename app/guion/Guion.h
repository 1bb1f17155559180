#pragma once

#include <optional>
#include <string>

#include "app/Place.h"

namespace FendaMaestros {

/// What `fenda guion` was asked for.
struct GuionOptions {
    /// The script; "-" reads it from standard input.
    std::string script;
    /// On real windows instead of headless.
    bool onWindows = false;
    /// Print every SQL text and every call of the write builder.
    bool traced = false;
    /// Where companies are; without it, a fresh folder with the demonstration company that is removed at the end.
    std::optional<Place> place;
    /// The company to open; without one, the first of the place.
    std::optional<std::string> company;
};

/// Runs a person's session written in a text file (docs/guion.md). What the person sees goes to standard output, why it
/// stopped to standard error. Returns the exit status: 0 the script ran to its end, 1 it failed on the way, 2 it did
/// not start (no such file, a syntax error, no company to open).
int runGuion(const GuionOptions& options);

}  // namespace FendaMaestros
