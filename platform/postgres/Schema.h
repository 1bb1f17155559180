#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "storage/Schema.h"

namespace FendaMaestros::postgres {

/// The commands that make tables and indexes in the schema `place`.
std::vector<std::string> creation(const storage::Schema& schema, std::string_view place);

/// Whether a text names a column of any kind (storage::ColumnKind::Any).
bool hasColumnOfAnyKind(std::string_view sql);

/// What lifts the next identity of a table above those that an INSERT brings along; empty when it brings none.
std::string identitiesAbove(std::string_view insertion);

}  // namespace FendaMaestros::postgres
