#pragma once

#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

#include "SessionContract.h"
#include "TemporaryFolder.h"
#include "platform/sqlite/DataFolder.h"
#include "platform/sqlite/SqliteConexion.h"

namespace FendaMaestros::tests {

namespace fs = std::filesystem;
using Kind = ErrorBd::Kind;
using sqlite::DataFolder;

constexpr auto shortWait = std::chrono::milliseconds(30);

/// Rights do not bind the superuser: takes them from the process for a while.
class WithoutPrivileges {
public:
    WithoutPrivileges() : user_(geteuid()) { taken_ = user_ != 0 || seteuid(65534) == 0; }
    ~WithoutPrivileges() { taken_ = taken_ && seteuid(user_) == 0; }

private:
    uid_t user_;
    bool taken_ = false;
};

/// A data folder of its own, where statements wait but a moment for one another.
class DataFolderTest : public ::testing::Test {
protected:
    std::unique_ptr<SesionBd> openCreated(const std::string& name = "Una") {
        folder->create({.name = name, .fiscalYear = 2026});
        return folder->openCompany(name);
    }
    static void insertCentre(SesionBd& session, const std::string& name) {
        session.Conexion()->run({"INSERT INTO Centro (Centro_Des) VALUES (?)", {name}});
    }
    static std::int64_t count(SesionBd& session, const std::string& table) {
        return session.Conexion()->Execute("SELECT COUNT(*) FROM " + table)->cell(0, 0).integer();
    }
    static fs::perms rightsOf(const fs::path& file) { return fs::status(file).permissions() & fs::perms::all; }
    static gid_t groupOf(const fs::path& file) {
        struct stat status {};
        return ::stat(file.c_str(), &status) == 0 ? status.st_gid : 0;
    }
    static sqlite::SqliteConexion& engine(SesionBd& session) {
        return dynamic_cast<sqlite::SqliteConexion&>(*session.Conexion());
    }
    static std::string textOf(const sqlite::Database& database, const std::string& sql) {
        const auto statement = database.prepare(sql);
        return sqlite3_step(statement.get()) == SQLITE_ROW
                   ? reinterpret_cast<const char*>(sqlite3_column_text(statement.get(), 0))
                   : "";
    }
    /// What a call says when it fails.
    template <class Call>
    static std::string sentenceOf(Call&& call) {
        try {
            call();
        } catch (const ErrorBd& error) {
            return error.what();
        }
        return "no error";
    }
    static bool has(const std::string& sentence, const std::string& part) {
        return sentence.find(part) != std::string::npos;
    }
    Kind openingError(const std::string& name) {
        return errorOf([&] { folder->openCompany(name); });
    }

    const TemporaryFolder temporary;
    const fs::path& path = temporary.path();
    const std::unique_ptr<DataFolder> folder = std::make_unique<DataFolder>(path, shortWait);
};

}  // namespace FendaMaestros::tests
