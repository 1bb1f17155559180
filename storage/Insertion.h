#pragma once

#include <span>
#include <string>
#include <string_view>

#include "session/ConexionBd.h"

namespace FendaMaestros::storage {

/// An insert of as many rows as said, at least one; its parameters, row by row, are for the caller to give. `table` is
/// named as ConexionBd wants it.
Statement insertion(std::string_view table, std::span<const std::string_view> columns, int rows = 1);

}  // namespace FendaMaestros::storage
