#include "platform/sqlite/Integrity.h"

#include <sqlite3.h>

#include "platform/sqlite/Check.h"
#include "toolkit/Text.h"

namespace FendaMaestros::sqlite {

namespace {

std::vector<std::string> answersOf(const Database& database, const std::string& pragma) {
    std::vector<std::string> answers;
    const auto statement = database.prepare(pragma);
    for (int code = 0; (code = sqlite3_step(statement.get())) != SQLITE_DONE;) {
        check(code, database.handle());
        const std::string answer = reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0));
        answers.push_back(text::replaced(answer, "\n", " "));
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
