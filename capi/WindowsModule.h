#pragma once

#include <string>

#include "app/guion/GuionDesktop.h"
#include "toolkit/Document.h"

namespace FendaMaestros::capi {

/// What the module with the windows offers the library, which loads it when windows, or PDF files, are first asked for.
/// Both are of one build: they share the classes of the core.
struct WindowsModule {
    /// Windows for an operator or, without one, for a person. Throws std::runtime_error, in Spanish, when there is no
    /// display.
    GuionDesktop (*open)(Operator* person);
    void (*writePdf)(const PagedDocument& document, const std::string& path);
};

/// The one function that the module exports: null for a library of another version.
using WindowsModuleEntry = const WindowsModule* (*)(const char* version);
inline constexpr const char* windowsModuleEntry = "fenda_windows_module";

/// Loads the module, once. Throws Refusal (FENDA_NO_WINDOWS) when it is not installed or cannot be loaded.
const WindowsModule& windowsModule();

}  // namespace FendaMaestros::capi
