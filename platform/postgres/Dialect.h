#pragma once

#include <string_view>

#include "storage/SqlTranslation.h"

namespace FendaMaestros::postgres {

/// Bring a text that reads, and one that writes, into the engine's dialect (storage/SqlTranslation.h). What is not said
/// here, the functions and operators of Preparation.cpp do. Parameters are $1, $2 ...; a text that reads has no "?" and
/// calls no function but those of the screens' language.
storage::Translation translateRead(std::string_view text);
storage::Translation translateWrite(std::string_view text);

}  // namespace FendaMaestros::postgres
