#include "platform/sqlite/Recovery.h"

#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <string_view>
#include <vector>

#include "platform/sqlite/CreationLock.h"
#include "platform/sqlite/FileNames.h"
#include "platform/sqlite/HeldDatabase.h"
#include "platform/sqlite/Integrity.h"
#include "session/ErrorBd.h"
#include "toolkit/Text.h"

namespace FendaMaestros::sqlite {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view asideMark = ".nueva";
constexpr std::string_view journalMark = "-journal";
/// Of the engine's journal for a transaction over two databases, and behind it nine hexadecimal digits.
constexpr std::string_view superMark = "-mj";
constexpr std::size_t superDigits = 9;

constexpr auto atOnce = std::chrono::milliseconds(0);

std::string_view without(std::string_view name, std::string_view ending) {
    return name.ends_with(ending) ? name.substr(0, name.size() - ending.size()) : name;
}

/// The name of the database that a super-journal belongs to; "" when it is none.
std::string_view ofSuperJournal(std::string_view name) {
    if (name.size() < superMark.size() + superDigits) return {};
    const auto digits = name.substr(name.size() - superDigits);
    const auto isHex = [](char c) { return text::isDigit(c) || (c >= 'A' && c <= 'F'); };
    const auto rest = name.substr(0, name.size() - superDigits);
    return std::ranges::all_of(digits, isHex) && rest.ends_with(superMark) ? without(rest, superMark)
                                                                           : std::string_view();
}

/// A database that is being made, or a journal of it.
bool isAside(std::string_view name) {
    if (const auto database = ofSuperJournal(name); !database.empty()) name = database;
    name = without(name, journalMark);
    const auto mark = name.rfind(asideMark);
    return mark != std::string_view::npos && name.substr(0, mark).ends_with(databaseExtension) &&
           text::isNumericCode(name.substr(mark + asideMark.size()));
}

/// What a look into a folder finds.
struct Remains {
    std::vector<fs::path> asides;
    std::vector<fs::path> superJournals;
    /// Databases beside which there is a journal.
    std::vector<fs::path> journalled;

    void add(const fs::path& file) {
        const std::string name = file.filename().string();
        const auto database = without(name, journalMark);
        if (isAside(name))
            asides.push_back(file);
        else if (ofSuperJournal(name).ends_with(databaseExtension))
            superJournals.push_back(file);
        else if (database.size() < name.size() && database.ends_with(databaseExtension))
            journalled.push_back(file.parent_path() / database);
    }
};

Remains remainsIn(const fs::path& folder) {
    Remains found;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), last; !error && entry != last; entry.increment(error))
        found.add(entry->path());
    return found;
}

fs::path journalOf(const fs::path& database) { return database.string() + std::string(journalMark); }

bool isWriting(const Database& database) {
    sqlite3_file* file = nullptr;
    sqlite3_file_control(database.handle(), "main", SQLITE_FCNTL_FILE_POINTER, static_cast<void*>(&file));
    int writing = 0;
    return !file || file->pMethods->xCheckReservedLock(file, &writing) != SQLITE_OK || writing != 0;
}

/// Whether a journal holds what a write has changed in its database. One that was not finished begins with a zero: its
/// write has changed nothing yet.
bool isInForce(const fs::path& journal) {
    std::ifstream file(journal, std::ios::binary);
    const int first = file.get();
    return file.good() && first != 0;
}

/// Removes a journal that nobody writes and that undoes nothing.
void removeIdleJournal(const Database& database, const fs::path& journal) {
    if (!fs::exists(journal)) return;
    database.execute("BEGIN IMMEDIATE");
    if (!isInForce(journal)) fs::remove(journal);
    database.execute("ROLLBACK");
}

/// When a program ended in the middle of a write, undoes that and checks the database.
void recoverDatabase(const fs::path& file, const Companies::Tell& tell) {
    const Database database(file, Database::Mode::Existing, atOnce);
    if (isWriting(database)) return;
    const bool cutOff = isInForce(journalOf(file));
    // The first read undoes.
    const auto faults = cutOff ? quickFaults(database) : std::vector<std::string>();
    removeIdleJournal(database, journalOf(file));
    if (faults.empty()) return;
    tell("La última vez se interrumpió una grabación, y " + describe(file) + " ha quedado dañada (" + faults.front() +
         "). Revísela con «fenda revisar» y recupere la última copia.");
}

void removeAll(const std::vector<fs::path>& files) {
    std::error_code ignored;
    for (const auto& file : files) fs::remove(file, ignored);
}

/// Holds the database, if it is there, so that none of its journals needs another file and no new one begins.
void hold(std::vector<HeldDatabase>& held, const fs::path& database) {
    if (fs::exists(database)) held.emplace_back(database, atOnce);
}

void removeSuperJournals(const fs::path& folder, const std::vector<fs::path>& superJournals) {
    if (superJournals.empty()) return;
    std::vector<HeldDatabase> held;
    for (const auto& file : superJournals) {
        const std::string name = file.filename().string();
        hold(held, folder / ofSuperJournal(name));
    }
    hold(held, folder / sharedFileName);
    removeAll(superJournals);
}

void removeAsides(const fs::path& folder, const std::vector<fs::path>& asides) {
    if (asides.empty()) return;
    const NobodyCreates nobody(folder);
    if (!nobody.isSure()) return;
    std::vector<HeldDatabase> held;
    hold(held, folder / sharedFileName);
    removeAll(asides);
}

}  // namespace

fs::path asideOf(const fs::path& file) { return file.string() + std::string(asideMark) + std::to_string(::getpid()); }

void recover(const fs::path& folder, const Companies::Tell& tell) {
    try {
        const Remains found = remainsIn(folder);
        for (const auto& database : found.journalled) recoverDatabase(database, tell);
        removeSuperJournals(folder, found.superJournals);
        removeAsides(folder, found.asides);
    } catch (const ErrorBd&) {
        // Whoever opens the database is told what is wrong with it.
    } catch (const fs::filesystem_error&) {
        // As above.
    }
}

}  // namespace FendaMaestros::sqlite
