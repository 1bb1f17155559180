#pragma once

#include <memory>
#include <string>

#include "app/guion/GuionDesktop.h"

/// Built where there are windows.
namespace FendaMaestros::window {

/// What the program can do without a display, behind the sentence that says that there is none.
inline constexpr const char* withoutDisplay = "; sin ella se puede usar «fenda guion», «fenda nif» y «fenda crear»";

/// Starts the windowing system, which ends with what is returned; a QtDesktop lives inside that time. Throws
/// std::runtime_error, in Spanish, when there is no display, with `instead` at the end of its sentence.
std::shared_ptr<void> openDisplay(const std::string& instead = withoutDisplay);

/// As FendaMaestros::windowDesktop.
GuionDesktop windowDesktop(Operator& person);

}  // namespace FendaMaestros::window
