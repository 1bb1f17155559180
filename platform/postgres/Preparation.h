#pragma once

#include <string>

namespace FendaMaestros::postgres {

/// The role that every clerk's session works as: it reads and writes rows and nothing else. Who keeps the server grants
/// it to the users of the clerks.
inline constexpr const char* clerkRole = "fenda_puesto";
/// The role that owns companies and makes new ones; it is a clerk too.
inline constexpr const char* managerRole = "fenda_gestor";

/// Raised whenever preparation() changes. What a newer program has prepared serves an older one.
inline constexpr int preparationVersion = 2;

/// Joins two texts: an operator of ours, since that of the engine joins numbers too.
inline constexpr const char* joinOperator = "<+>";

/// The SQL that makes a database ready for companies: roles, schemas, the order of texts, functions, the list of
/// companies. For a superuser, or the owner of the database with the right to create roles. It may be run again, which
/// brings what there is up to date.
std::string preparation();

}  // namespace FendaMaestros::postgres
