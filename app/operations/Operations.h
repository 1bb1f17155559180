#pragma once

#include <string_view>
#include <vector>

#include "app/operations/Operation.h"

namespace FendaMaestros {

/// Every entry operation that works, in the order of the menus; those of one group together.
const std::vector<Operation>& operations();
/// Null when there is none of that name; case does not matter.
const Operation* findOperation(std::string_view name);
/// Throws std::invalid_argument, in Spanish, for arguments that the operation cannot take, without calling it.
void checkArguments(const Operation& operation, const Arguments& arguments);

/// Those of each menu, a file each.
std::vector<Operation> tableOperations();
std::vector<Operation> accountOperations();
std::vector<Operation> identifierOperations();

}  // namespace FendaMaestros
