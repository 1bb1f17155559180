#pragma once

#include <string>

#include "platform/sqlite/Database.h"

namespace FendaMaestros::sqlite {

/// The two kinds of database, each with its own tables.
enum class Contents { Company, Shared };

/// The statements that make tables and indexes, parted by semicolons. `schema` as for createSchema().
std::string schemaSql(const std::string& schema, Contents contents);

/// Creates tables and indexes in an empty database. `schema` is the name it is attached by: "main" or "KXComun".
void createSchema(const Database& database, const std::string& schema, Contents contents);

/// Throws ErrorBd unless the database holds those contents in a version that this program knows: NotADatabase for
/// another one, NewerVersion for a version to come.
void checkSchema(const Database& database, const std::string& schema, Contents contents);

}  // namespace FendaMaestros::sqlite
