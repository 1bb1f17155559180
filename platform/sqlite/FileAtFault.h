#pragma once

#include <cstdint>

struct sqlite3;

/// Which of the two databases of a connection an error of the engine is about: the engine itself does not say.
namespace FendaMaestros::sqlite {

enum class AtFault : std::uint8_t { Unknown, Company, Shared };

/// The one that another connection holds so that this one has to wait; Unknown when it has let go meanwhile.
AtFault heldByOthers(sqlite3* database);

/// The one whose file is damaged. Reads both files whole.
AtFault damaged(sqlite3* database);

/// Whether one of both has a journal beside it, which has to be undone before anything else is read.
bool hasJournal(sqlite3* database);

}  // namespace FendaMaestros::sqlite
