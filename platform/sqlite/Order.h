#pragma once

#include <string>

#include "platform/sqlite/Database.h"

/// By which version of the Spanish order (Collation.h) the indexes of a database are sorted. What another version has
/// sorted is not found any more, and what is not found is created twice.
namespace FendaMaestros::sqlite {

/// Stores in an empty database that its indexes are sorted by the order of this program. `schema` is the name that it
/// is attached by.
void storeOrder(const Database& database, const std::string& schema);

/// Whether the indexes of the main database are sorted by it.
bool hasCurrentOrder(const Database& database);

/// Sorts the indexes of the main database anew, with nobody else in it, unless another program has just done so.
void renewOrder(const Database& database);

}  // namespace FendaMaestros::sqlite
