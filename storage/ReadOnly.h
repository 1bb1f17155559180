#pragma once

#include <string_view>

namespace FendaMaestros::storage {

/// Dialect::admits for texts that read: no word that writes, and of functions those of the screens' language alone. An
/// engine has functions that write, and hundreds that a screen has no use for.
bool admitsInRead(std::string_view word, bool called);

/// Whether a text begins as a write of rows does: with INSERT, UPDATE or DELETE.
bool beginsAsWriteOfRows(std::string_view sql);

}  // namespace FendaMaestros::storage
