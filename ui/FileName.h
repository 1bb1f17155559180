#pragma once

#include <string>

namespace FendaMaestros {

/// A file name, without extension, made of a title: what file systems do not take becomes a blank, and it is cut so
/// that an extension still fits. `otherwise` when nothing is left.
std::string fileNameFrom(const std::string& title, const std::string& otherwise);

}  // namespace FendaMaestros
