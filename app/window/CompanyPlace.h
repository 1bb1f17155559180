#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "session/SesionBd.h"

namespace FendaMaestros {

/// The companies of a place, for a person to choose from.
struct CompanyPlace {
    std::vector<std::string> names;
    /// Opens the session of one of them. Throws std::exception, in Spanish, when that cannot be done.
    std::function<std::unique_ptr<SesionBd>(const std::string& company)> open;
};

/// The companies that a connection to a server leads to, at least one. Throws std::exception, in Spanish, when it leads
/// to none.
using ServerConnector = std::function<CompanyPlace(const std::string& connection)>;

}  // namespace FendaMaestros
