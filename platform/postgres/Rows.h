#pragma once

#include <string>

#include "platform/postgres/Trip.h"
#include "session/Recordset.h"

namespace FendaMaestros::postgres {

/// Appends the rows of a result: whole numbers and truth values as integers, other numbers as reals, the rest as text.
void appendRows(Recordset& rows, const pg_result* result);

/// Whether a type of the engine is that of columns of any kind (storage::ColumnKind::Any).
bool isAnyKind(unsigned type);

/// The value as the server takes it for a column. Throws ErrorBd (Constraint) for a text with a zero byte.
Parameter parameterOf(const Variant& value, bool anyKind);
Parameter parameterOf(std::string text);

}  // namespace FendaMaestros::postgres
