#pragma once

#include <string>
#include <string_view>
#include <vector>

struct pg_result;

namespace FendaMaestros::postgres {

/// The names of the columns of a read, which the engine gives in small letters: columns of tables spelled as the tables
/// are defined, names that the text gives as there; an expression without a name has its text for one.
std::vector<std::string> columnNames(std::string_view sql, const pg_result* result);

}  // namespace FendaMaestros::postgres
