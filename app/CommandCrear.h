#pragma once

#include <filesystem>

#include "session/Companies.h"

namespace FendaMaestros {

/// `fenda crear`: makes the company, and the data folder with it when there is none, and says where. Returns 0. Throws
/// std::invalid_argument for one that makes no sense, and what else goes wrong as other std::exception; both in
/// Spanish.
int runCrear(const std::filesystem::path& folder, const TypedCompany& typed);

}  // namespace FendaMaestros
