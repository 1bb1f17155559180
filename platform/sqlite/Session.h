#pragma once

#include <memory>

#include "session/ConexionBd.h"

namespace FendaMaestros::sqlite {

/// A company and a shared database in memory, with all their tables, empty.
std::shared_ptr<ConexionBd> openMemory();

}  // namespace FendaMaestros::sqlite
