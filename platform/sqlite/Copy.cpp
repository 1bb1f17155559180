#include "platform/sqlite/Copy.h"

#include <sqlite3.h>

#include <memory>

#include "platform/sqlite/Check.h"
#include "platform/sqlite/FileNames.h"
#include "platform/sqlite/Files.h"
#include "platform/sqlite/HeldDatabase.h"

namespace FendaMaestros::sqlite {

namespace {

struct FinishBackup {
    void operator()(sqlite3_backup* backup) const { sqlite3_backup_finish(backup); }
};

void copyInto(const Database& to, const Database& from) {
    // Nobody needs it before it is whole.
    to.execute("PRAGMA journal_mode = MEMORY; PRAGMA synchronous = OFF");
    const std::unique_ptr<sqlite3_backup, FinishBackup> backup(
        sqlite3_backup_init(to.handle(), "main", from.handle(), "main"));
    constexpr int allPages = -1;
    check(backup ? sqlite3_backup_step(backup.get(), allPages) : sqlite3_errcode(to.handle()), to.handle());
}

void copyToFile(const std::filesystem::path& file, const Database& from) {
    createEmptyFile(file, file.filename());
    copyInto(Database(file, Database::Mode::Existing, std::chrono::milliseconds(0)), from);
}

}  // namespace

std::chrono::milliseconds copyDatabases(const std::vector<std::filesystem::path>& files,
                                        const std::filesystem::path& folder, std::chrono::milliseconds timeout) {
    using Clock = std::chrono::steady_clock;
    std::vector<HeldDatabase> held;
    Clock::time_point start;
    for (const auto& file : files) {
        saying("No se puede copiar " + describe(file), [&] { held.emplace_back(file, timeout); });
        if (held.size() == 1) start = Clock::now();
    }
    for (std::size_t i = 0; i < files.size(); ++i)
        saying("No se puede copiar " + describe(files[i]),
               [&] { copyToFile(folder / files[i].filename(), held[i].database()); });
    held.clear();
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start);
}

Database temporaryCopy(const std::filesystem::path& file, std::chrono::milliseconds timeout) {
    // A database without a name is a file that the engine removes.
    Database copy("", Database::Mode::Create, timeout);
    copyInto(copy, HeldDatabase(file, timeout).database());
    return copy;
}

}  // namespace FendaMaestros::sqlite
