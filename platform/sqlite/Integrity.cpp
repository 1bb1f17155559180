#include "platform/sqlite/Integrity.h"

#include <sqlite3.h>

#include <sstream>
#include <string_view>

#include "platform/sqlite/Check.h"

namespace FendaMaestros::sqlite {

namespace {

/// How the engine begins what it says of a database.
constexpr std::string_view heading = "*** in database";

std::vector<std::string> answersOf(const Database& database, const std::string& pragma) {
    std::vector<std::string> answers;
    const auto statement = database.prepare(pragma);
    for (int code = 0; (code = sqlite3_step(statement.get())) != SQLITE_DONE;) {
        check(code, database.handle());
        std::istringstream lines(reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0)));
        for (std::string line; std::getline(lines, line);)
            if (!line.starts_with(heading)) answers.push_back(line);
    }
    if (answers.size() == 1 && answers.front() == "ok") answers.clear();
    return answers;
}

}  // namespace

std::vector<std::string> faults(const Database& database) { return answersOf(database, "PRAGMA main.integrity_check"); }

std::vector<std::string> quickFaults(const Database& database) {
    return answersOf(database, "PRAGMA main.quick_check(1)");
}

}  // namespace FendaMaestros::sqlite
