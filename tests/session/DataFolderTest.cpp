#include "platform/sqlite/DataFolder.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <fstream>
#include <map>
#include <random>
#include <thread>

#include "SessionContract.h"
#include "TemporaryFolder.h"
#include "platform/sqlite/Collation.h"
#include "platform/sqlite/SqliteConexion.h"

namespace FendaMaestros::tests {
namespace {

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

TEST_F(DataFolderTest, SaysWhyACompanyCannotBeOpened) {
    openCreated();
    EXPECT_EQ(openingError("Ninguna"), Kind::NotADatabase);
    EXPECT_EQ(errorOf([&] { DataFolder(path / "falta").openCompany("Una"); }), Kind::NotADatabase);
    EXPECT_EQ(errorOf([&] { DataFolder(path / "falta").list(); }), Kind::NotADatabase);

    std::ofstream(path / "Texto.db") << std::string(5000, 'x');
    std::ofstream(path / "Vacia.db");
    fs::copy(path / "KXComun.db", path / "Comun.db");
    for (const char* name : {"Texto", "Vacia", "Comun"}) EXPECT_EQ(openingError(name), Kind::NotADatabase) << name;

    folder->create({.name = "Futura", .fiscalYear = 2026});
    engine(*folder->openCompany("Futura")).database().execute("PRAGMA main.user_version = 99");
    EXPECT_EQ(openingError("Futura"), Kind::NewerVersion);
    engine(*folder->openCompany("Una")).database().execute("PRAGMA KXComun.user_version = 99");
    EXPECT_EQ(openingError("Una"), Kind::NewerVersion);
    std::ofstream(path / "KXComun.db") << std::string(5000, 'x');
    EXPECT_EQ(openingError("Una"), Kind::NotADatabase);
    fs::remove(path / "KXComun.db");
    EXPECT_EQ(openingError("Una"), Kind::NotADatabase);
    EXPECT_PRED2(has, sentenceOf([&] { folder->create({.name = "Nueva", .fiscalYear = 2026}); }),
                 "Falta la base de datos común");
    EXPECT_FALSE(fs::exists(path / "KXComun.db")) << "an empty one would hide that the identities are gone";
}

TEST_F(DataFolderTest, WithoutTheRightToWriteNothingChanges) {
    const auto before = openCreated();
    for (const char* file : {"Una.db", "KXComun.db"}) fs::permissions(path / file, static_cast<fs::perms>(0444));
    fs::permissions(path, static_cast<fs::perms>(0555));
    const WithoutPrivileges without;
    const auto session = folder->openCompany("Una");
    EXPECT_EQ(errorOf([&] { insertCentre(*session, "x"); }), Kind::ReadOnly);
    EXPECT_EQ(count(*session, "Centro"), 0);
    EXPECT_EQ(errorOf([&] { folder->create({.name = "Otra", .fiscalYear = 2026}); }), Kind::ReadOnly);
    EXPECT_EQ(errorOf([&] { DataFolder(path / "nueva").createDemonstration(); }), Kind::ReadOnly);
    EXPECT_EQ(folder->list(), std::vector<std::string>{"Una"});
}

TEST_F(DataFolderTest, WhatIsCreatedIsForItsOwnerAndTheGroupOfASharedFolder) {
    constexpr auto ofAFile = fs::perms::owner_read | fs::perms::owner_write;
    constexpr auto andGroup = ofAFile | fs::perms::group_read | fs::perms::group_write;
    const fs::path own = path / "dentro" / "datos";
    DataFolder(own).create({.name = "Una", .fiscalYear = 2026});
    for (const auto& made : {own, own.parent_path()}) EXPECT_EQ(rightsOf(made), fs::perms::owner_all);
    for (const char* file : {"Una.db", "KXComun.db"}) EXPECT_EQ(rightsOf(own / file), ofAFile) << file;

    for (const int rights : {02770, 0770, 02775, 0775, 0755, 0777}) {
        SCOPED_TRACE(rights);
        const bool shared = rights != 0755 && rights != 0777;
        const fs::path there = path / std::to_string(rights);
        fs::create_directory(there);
        // Only the superuser gives away to any group; the others share with their own.
        ASSERT_TRUE(::geteuid() != 0 || ::chown(there.c_str(), static_cast<uid_t>(-1), 12345) == 0);
        fs::permissions(there, static_cast<fs::perms>(rights));
        DataFolder office(there);
        std::vector<std::string> told;
        office.tellTo([&](const std::string& sentence) { told.push_back(sentence); });
        for (const std::string name : {"Una", "Otra"}) {
            office.create({.name = name, .fiscalYear = 2026});
            EXPECT_EQ(rightsOf(there / (name + ".db")), shared ? andGroup : ofAFile);
            EXPECT_TRUE(!shared || groupOf(there / (name + ".db")) == groupOf(there));
        }
        EXPECT_EQ(told.size(), shared ? 1U : 0U);
    }
}

TEST_F(DataFolderTest, ABackupIsOneMomentOfAllCompaniesWhileOthersWrite) {
    const std::vector<std::string> companies{"Otra", "Una"};
    for (const auto& name : companies) folder->create({.name = name, .fiscalYear = 2026});
    const auto concepts = count(*folder->open("Una"), "KXComun.dbo.Conceptos");
    std::vector<pid_t> writers;
    for (const auto& name : companies) {
        writers.push_back(::fork());
        if (writers.back() != 0) continue;
        const auto session = DataFolder(path).open(name);
        while (true) {
            auto& connection = *session->Conexion();
            connection.BeginTrans();
            connection.run({"INSERT INTO Centro (Centro_Des) VALUES (?)", {name}});
            connection.run({"INSERT INTO KXComun.dbo.Conceptos (Conce_Des) VALUES (?)", {name}});
            connection.CommitTrans();
            // Two that never pause keep the third out for as long as they like.
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
    }
    std::int64_t before = 0;
    const DataFolder office(path);
    for (int round = 0; round < 8; ++round) {
        const fs::path copy = path / ("copia" + std::to_string(round));
        const Backup made = office.backUp(copy);
        EXPECT_EQ(made.companies, companies);
        EXPECT_LT(made.heldUp, std::chrono::seconds(2));
        EXPECT_EQ(rightsOf(copy), fs::perms::owner_all);
        const auto one = DataFolder(copy).open("Una"), other = DataFolder(copy).open("Otra");
        const auto inCompanies = count(*one, "Centro") + count(*other, "Centro");
        EXPECT_EQ(inCompanies, count(*one, "KXComun.dbo.Conceptos") - concepts);
        EXPECT_GE(inCompanies, before);
        before = inCompanies;
    }
    EXPECT_GT(before, 0);
    for (const pid_t writer : writers) {
        ::kill(writer, SIGKILL);
        int status = 0;
        ::waitpid(writer, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status)) << "a writer was turned away";
    }
}

TEST_F(DataFolderTest, ABackupComesBackWholeAndOverwritesNothing) {
    insertCentre(*openCreated(), "de entonces");
    const fs::path copy = path / "a.db" / "copia", back = path / "vuelta";
    EXPECT_PRED2(has, sentenceOf([&] { folder->backUp(path / std::string(300, 'x')); }),
                 "xxx»: el nombre es demasiado");
    folder->backUp(copy);
    EXPECT_EQ(folder->list(), std::vector<std::string>{"Una"}) << "a folder is no company";
    insertCentre(*folder->open("Una"), "de después");
    fs::create_directory(back);
    fs::permissions(back, static_cast<fs::perms>(02770));
    const DataFolder restored(back);
    EXPECT_EQ(restored.restore(copy).companies, std::vector<std::string>{"Una"});
    EXPECT_EQ(restored.open("Una")->Conexion()->Execute("SELECT Centro_Des FROM Centro")->cell(0, 0).text(),
              "de entonces");
    EXPECT_EQ(fs::status(back).permissions(), static_cast<fs::perms>(02770));
    EXPECT_EQ(rightsOf(back / "Una.db"), static_cast<fs::perms>(0660));

    EXPECT_EQ(errorOf([&] { restored.restore(copy); }), Kind::Constraint);
    EXPECT_EQ(errorOf([&] { folder->restore(copy); }), Kind::Constraint);
    EXPECT_EQ(errorOf([&] { folder->backUp(copy); }), Kind::Constraint);
    EXPECT_EQ(count(*folder->open("Una"), "Centro"), 2);
    EXPECT_EQ(errorOf([&] { DataFolder(path / "x").restore(path / "ninguna"); }), Kind::NotADatabase);
    engine(*DataFolder(copy).openCompany("Una")).database().execute("DELETE FROM Parametros");
    EXPECT_ANY_THROW(DataFolder(path / "x").restore(copy));
    fs::remove(copy / "KXComun.db");
    EXPECT_EQ(errorOf([&] { DataFolder(path / "x").restore(copy); }), Kind::NotADatabase);
    std::ofstream(path / "Una.db", std::ios::in | std::ios::out).seekp(60'000) << std::string(9000, 'x');
    EXPECT_EQ(errorOf([&] { folder->backUp(path / "x"); }), Kind::NotADatabase);
    std::ofstream(path / "Una.db") << std::string(9000, 'x');
    EXPECT_PRED2(has, sentenceOf([&] { folder->backUp(path / "x"); }), "No se puede copiar la base de datos de la");
    EXPECT_FALSE(fs::exists(path / "x"));
    EXPECT_EQ(std::distance(fs::directory_iterator(path), {}), 4) << "two databases, the copies and what came back";
}

TEST_F(DataFolderTest, ABackupThatIsKilledIsNone) {
    openCreated();
    const fs::path copies = path / "copias";
    fs::create_directory(copies);
    for (int round = 0; round < 10; ++round) {
        const pid_t program = ::fork();
        if (program == 0) {
            folder->backUp(copies / "copia");
            ::_exit(0);
        }
        while (fs::is_empty(copies)) std::this_thread::yield();
        std::this_thread::sleep_for(std::chrono::milliseconds(round));
        ::kill(program, SIGKILL);
        ::waitpid(program, nullptr, 0);
        const bool made = fs::exists(copies / "copia");
        EXPECT_TRUE(!made || count(*DataFolder(copies / "copia").open("Una"), "Centro") == 0);
        fs::remove_all(copies / "copia");
    }
    folder->backUp(copies / "copia");
    EXPECT_EQ(std::distance(fs::directory_iterator(copies), {}), 1);
}

TEST_F(DataFolderTest, AnExaminationTellsDamageAndWhoMayRead) {
    openCreated();
    std::vector<std::string> told;
    const auto examine = [&](const std::string& company) {
        told.clear();
        return folder->examine(company, [&](const std::string& sentence) { told.push_back(sentence); });
    };
    EXPECT_TRUE(examine("") && told.empty());
    EXPECT_TRUE(examine("Una") && told.empty());
    EXPECT_EQ(errorOf([&] { examine("Otra"); }), Kind::NotADatabase);
    fs::permissions(path, static_cast<fs::perms>(0755));
    EXPECT_TRUE(examine("") && told.size() == 1 && told[0].find("Cualquier usuario") == 0);

    std::ofstream(path / "Una.db", std::ios::in | std::ios::out).seekp(49 * 4096 + 3).write("\0\1", 2);
    EXPECT_FALSE(examine("Una"));
    ASSERT_FALSE(told.empty());
    EXPECT_EQ(told[0].find("Está dañada la base de datos de la empresa «Una»: Fragmentation of"), 0U) << told[0];
    std::ofstream(path / "KXComun.db", std::ios::trunc) << std::string(9000, 'x');
    EXPECT_FALSE(examine(""));
    EXPECT_EQ(told.size(), 2U);
}

TEST_F(DataFolderTest, AFolderThatCannotBeReadIsNotTakenForAMissingOne) {
    openCreated();
    fs::permissions(path, fs::perms::none);
    const WithoutPrivileges without;
    EXPECT_EQ(openingError("Una"), Kind::ReadOnly);
    EXPECT_EQ(errorOf([&] { folder->list(); }), Kind::ReadOnly);
    EXPECT_TRUE(sentenceOf([&] { folder->list(); }).ends_with("»: falta el permiso."));
}

TEST_F(DataFolderTest, ProgramsThatCreateAtOnceDoNotHarmEachOther) {
    std::vector<pid_t> programs;
    for (const char* name : {"Misma", "Misma", "misma", "Otra", "Tercera"}) {
        const pid_t program = ::fork();
        if (program == 0) {
            try {
                folder->create({.name = name, .fiscalYear = 2026});
            } catch (const ErrorBd& error) {
                ::_exit(error.kind() == Kind::Constraint ? 1 : 2);
            }
            ::_exit(0);
        }
        programs.push_back(program);
    }
    std::map<int, int> ended;
    for (const pid_t program : programs) {
        int status = 0;
        ::waitpid(program, &status, 0);
        ++ended[WEXITSTATUS(status)];
    }
    EXPECT_EQ(ended[2], 0) << "what fails is a name that is taken";
    const auto made = folder->list();
    EXPECT_EQ(static_cast<int>(made.size()), ended[0]);
    for (const auto& name : made) EXPECT_EQ(count(*folder->openCompany(name), "Centro"), 0);
}

TEST_F(DataFolderTest, ASharedDatabaseThatCannotBeUsedRefusesNewCompanies) {
    openCreated();
    std::ofstream(path / "KXComun.db", std::ios::trunc) << "esto no es una base de datos";
    EXPECT_EQ(errorOf([&] { folder->create({.name = "Dos", .fiscalYear = 2026}); }), Kind::NotADatabase);
    EXPECT_EQ(folder->list(), std::vector<std::string>{"Una"});
}

TEST_F(DataFolderTest, AHalfMadeCompanyIsNotThere) {
    openCreated();
    const std::string aside = "Otra.db.nueva" + std::to_string(::getpid());
    fs::create_directories(path / aside / "ocupada");
    const auto failure = sentenceOf([&] { folder->create({.name = "Otra", .fiscalYear = 2026}); });
    EXPECT_PRED2(has, failure, "/Otra.db»");
    EXPECT_EQ(folder->list(), std::vector<std::string>{"Una"});
}

TEST_F(DataFolderTest, WhatKilledProgramsLeaveGoesAtTheNextStart) {
    const auto start = [&](int kind) {
        if (kind == 0) folder->list();
        if (kind == 1) folder->open("Una");
        if (kind == 2) folder->create({.name = "Otra", .fiscalYear = 2026});
    };
    openCreated();
    for (int kind = 0; kind < 3; ++kind) {
        for (const char* left : {"X.db.nueva1", "X.db.nueva1-journal", "KXComun.db.nueva99999", "Una.db-mj0A1B2C9DE",
                                 "X.db.nueva1-mj0A1B2C9DE", "Ida.db-mj0A1B2C9DE"})
            std::ofstream(path / left) << "restos";
        for (const char* own : {"X.db.nueva", "nueva1", "Una.db-mj0A1B2", "notas.txt"}) std::ofstream(path / own);
        start(kind);
        EXPECT_EQ(std::distance(fs::directory_iterator(path), {}), 2 + 4 + (kind == 2)) << kind;
    }
}

TEST_F(DataFolderTest, WhatOthersAreMakingStays) {
    const auto session = openCreated();
    const auto making = [&] {
        const auto at = [](const fs::directory_entry& entry) {
            return entry.path().filename().string().find(".nueva") != std::string::npos;
        };
        return std::any_of(fs::directory_iterator(path), {}, at);
    };
    folder->receive("Otra", [&](ConexionBd& empty) {
        empty.run({"INSERT INTO Centro (Centro_Des) VALUES (?)", {"x"}});
        EXPECT_EQ(DataFolder(path, shortWait).list(), std::vector<std::string>{"Una"});
        EXPECT_TRUE(making());
    });
    EXPECT_FALSE(making());
    EXPECT_EQ(count(*folder->open("Otra"), "Centro"), 1);
}

TEST_F(DataFolderTest, ACreationKilledAnywhereLeavesNothing) {
    openCreated();
    std::mt19937 random(7);
    int cut = 0;
    for (int round = 0; round < 12; ++round) {
        const pid_t program = ::fork();
        if (program == 0) {
            folder->createDemonstration();
            ::_exit(0);
        }
        while (std::distance(fs::directory_iterator(path), {}) < 3) std::this_thread::yield();
        std::this_thread::sleep_for(std::chrono::milliseconds(random() % 120));
        ::kill(program, SIGKILL);
        ::waitpid(program, nullptr, 0);
        const auto session = folder->open("Una");
        const auto files = std::distance(fs::directory_iterator(path), {});
        const bool made = fs::exists(path / "Empresa de demostración.db");
        EXPECT_EQ(files, made ? 3 : 2);
        const auto identities = count(*session, "KXComun.dbo.Nif");
        EXPECT_TRUE(identities == 30 || (identities == 0 && !made)) << identities;
        cut += made ? 0 : 1;
        if (made) break;
    }
    EXPECT_GT(cut, 0);
}

TEST_F(DataFolderTest, ADatabaseThatAWriteWasCutOffInIsChecked) {
    auto session = openCreated();
    std::vector<std::string> told;
    folder->tellTo([&](const std::string& sentence) { told.push_back(sentence); });
    const auto cutOff = [&] {
        session->Conexion()->BeginTrans();
        insertCentre(*session, std::string(200'000, 'x'));
        engine(*session).database().execute("PRAGMA main.cache_size = 1");
        insertCentre(*session, std::string(200'000, 'y'));
        fs::copy(path / "Una.db-journal", path / "guardado");
        session->Conexion()->RollbackTrans();
        fs::rename(path / "guardado", path / "Una.db-journal");
    };
    cutOff();
    session = folder->openCompany("Una");
    EXPECT_FALSE(fs::exists(path / "Una.db-journal"));
    EXPECT_TRUE(told.empty()) << told[0];

    cutOff();
    session.reset();
    const auto size = fs::file_size(path / "Una.db");
    std::fstream file(path / "Una.db", std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(static_cast<std::streamoff>(size / 2));
    file << std::string(20'000, 'x');
    file.close();
    folder->list();
    ASSERT_EQ(told.size(), 1U);
    EXPECT_NE(told[0].find("«Una» ha quedado dañada"), std::string::npos) << told[0];
    folder->list();
    EXPECT_EQ(told.size(), 1U);
}

TEST_F(DataFolderTest, AFullDiskUndoesTheWholeTransactionInBothFiles) {
    const auto session = openCreated();
    auto& connection = *session->Conexion();
    const auto countries = count(*session, "KXComun.dbo.Pais");
    engine(*session).database().execute("PRAGMA main.max_page_count = 1");
    connection.BeginTrans();
    connection.BeginTrans();
    connection.run({"DELETE FROM KXComun.dbo.Pais", {}});
    EXPECT_EQ(errorOf([&] { insertCentre(*session, std::string(100000, 'x')); }), Kind::Full);
    const std::string undone = "Un error anterior ha deshecho la transacción. No se ha guardado nada.";
    for (const int level : {2, 1}) {
        SCOPED_TRACE(level);
        EXPECT_EQ(sentenceOf([&] { insertCentre(*session, "suelta"); }), undone);
        EXPECT_EQ(sentenceOf([&] { count(*session, "Centro"); }), undone);
        EXPECT_EQ(sentenceOf([&] { connection.BeginTrans(); }), undone);
        EXPECT_EQ(sentenceOf([&] { connection.CommitTrans(); }), undone);
        connection.RollbackTrans();
    }
    EXPECT_EQ(count(*session, "Centro"), 0);
    EXPECT_EQ(count(*session, "KXComun.dbo.Pais"), countries);
    engine(*session).database().execute("PRAGMA main.max_page_count = 1000000");
    insertCentre(*session, "cabe");
    EXPECT_EQ(count(*session, "Centro"), 1);
}

TEST_F(DataFolderTest, TwoConnectionsOnOneCompanyTakeTurns) {
    const auto one = openCreated();
    const auto other = folder->openCompany("Una");
    one->Conexion()->BeginTrans();
    other->Conexion()->BeginTrans();
    insertCentre(*one, "primera");
    EXPECT_EQ(errorOf([&] { insertCentre(*other, "segunda"); }), Kind::Busy);
    EXPECT_PRED2(has, sentenceOf([&] { insertCentre(*other, "segunda"); }), "usando los datos de la empresa en");
    other->Conexion()->RollbackTrans();
    EXPECT_EQ(count(*other, "Centro"), 0);
    one->Conexion()->CommitTrans();
    insertCentre(*other, "segunda");
    EXPECT_EQ(count(*one, "Centro"), 2);

    // A commit has to wait for who reads.
    folder->create({.name = "Otra", .fiscalYear = 2026});
    const auto neighbour = folder->openCompany("Otra");
    neighbour->Conexion()->BeginTrans();
    EXPECT_EQ(count(*neighbour, "KXComun.dbo.Masas WHERE Masas_Cod = 'x'"), 0);
    one->Conexion()->BeginTrans();
    one->Conexion()->run({"DELETE FROM KXComun.dbo.TVI", {}});
    EXPECT_PRED2(has, sentenceOf([&] { one->Conexion()->CommitTrans(); }), "usando los datos comunes (KXComun.db) en");
    one->Conexion()->RollbackTrans();
    EXPECT_GT(count(*one, "KXComun.dbo.TVI"), 0);
}

/// --- the order of texts

int backwards(void*, int sizeA, const void* a, int sizeB, const void* b) {
    return -sqlite::compareSpanish({static_cast<const char*>(a), static_cast<std::size_t>(sizeA)},
                                   {static_cast<const char*>(b), static_cast<std::size_t>(sizeB)});
}

TEST_F(DataFolderTest, WhatAnotherVersionOfTheOrderHasSortedIsSortedAnew) {
    folder->createDemonstration();
    const std::string name = folder->list().front(), wanted = "KXComun.dbo.Nif WHERE Nif_Doc = 'X0000000T'";
    folder->open(name)->Conexion()->run({"INSERT INTO KXComun.dbo.Nif (Nif_Doc) VALUES (?)", {"X0000000T"}});
    for (const auto& file : {path / "KXComun.db", path / (name + ".db")}) {
        const sqlite::Database other(file, sqlite::Database::Mode::Existing, shortWait);
        sqlite3_create_collation(other.handle(), "ES", SQLITE_UTF8, nullptr, backwards);
        other.execute("REINDEX ES; UPDATE Ordenacion SET Version = 'otra'");
    }
    std::vector<std::string> told;
    folder->tellTo([&](const std::string& sentence) { told.push_back(sentence); });
    {
        const sqlite::Database inUse(path / "KXComun.db", sqlite::Database::Mode::Existing, shortWait);
        inUse.execute("BEGIN; SELECT COUNT(*) FROM Nif");
        EXPECT_EQ(openingError(name), Kind::Busy);
    }
    const auto session = folder->open(name);
    EXPECT_EQ(told,
              (std::vector<std::string>{
                  "Se han rehecho los índices de la empresa "
                  "«" +
                      name + "»: el orden de los textos es de otra versión.",
                  "Se han rehecho los índices de la base de datos común: el orden de los textos es de otra versión."}));
    EXPECT_EQ(count(*session, wanted), 1);
    for (const char* integrity : {"PRAGMA main.integrity_check", "PRAGMA KXComun.integrity_check"})
        EXPECT_EQ(textOf(engine(*session).database(), integrity), "ok");
    folder->open(name);
    EXPECT_EQ(told.size(), 2U);

    engine(*session).database().execute("DROP TABLE main.Ordenacion");
    fs::permissions(path / (name + ".db"), static_cast<fs::perms>(0444));
    fs::permissions(path, static_cast<fs::perms>(0555));
    const WithoutPrivileges without;
    EXPECT_EQ(openingError(name), Kind::ReadOnly);
}

TEST_F(DataFolderTest, ALanguageWithoutAnOrderOfItsOwnIsAnError) {
    EXPECT_NE(sqlite::orderVersion(), "");
    EXPECT_THROW(sqlite::orderVersion("xx"), ErrorBd);
}

TEST_F(DataFolderTest, SaysWhichFileIsDamaged) {
    const auto damage = [this](const char* file, std::streamoff first) {
        std::fstream opened(path / file, std::ios::in | std::ios::out | std::ios::binary);
        const auto size = static_cast<std::streamoff>(fs::file_size(path / file));
        for (auto at = first; at < size; at += 4096) opened.seekp(at) << "daño";
    };
    const auto session = openCreated();
    const auto reading = [&](const std::string& table) { return sentenceOf([&] { count(*session, table); }); };
    damage("KXComun.db", 4096);
    EXPECT_EQ(reading("KXComun.dbo.Pais WHERE Pais_Nom > ''"), "Están dañados los datos comunes (KXComun.db).");
    for (const char* file : {"KXComun.db", "Una.db"}) fs::remove(path / file);
    folder->create({.name = "Otra", .fiscalYear = 2026});
    const auto other = folder->openCompany("Otra");
    damage("Otra.db", 40960);
    EXPECT_EQ(sentenceOf([&] { count(*other, "PCta WHERE PCta_Des > ''"); }), "Están dañados los datos de la empresa.");
}

TEST_F(DataFolderTest, AWriteThatACrashCutShortIsUndoneOnlyWithTheRightTo) {
    openCreated();
    fs::permissions(path, fs::perms::all);
    const pid_t program = ::fork();
    if (program == 0) {
        const auto session = folder->openCompany("Una");
        engine(*session).database().execute("PRAGMA main.cache_size = 1");
        session->Conexion()->BeginTrans();
        for (int i = 0; i < 20; ++i) insertCentre(*session, std::string(10000, 'x'));
        ::_exit(0);
    }
    ::waitpid(program, nullptr, 0);
    ASSERT_TRUE(fs::exists(path / "Una.db-journal"));
    for (const auto& file : fs::directory_iterator(path)) fs::permissions(file, static_cast<fs::perms>(0666));
    for (const int rights : {0644, 0666}) {
        SCOPED_TRACE(rights);
        fs::permissions(path / "Una.db-journal", static_cast<fs::perms>(rights));
        fs::permissions(path, static_cast<fs::perms>(0555));
        const WithoutPrivileges without;
        EXPECT_EQ(openingError("Una"), Kind::ReadOnly);
        EXPECT_PRED2(has, sentenceOf([&] { folder->openCompany("Una"); }), "Hay una escritura a medias");
    }
    fs::permissions(path, fs::perms::all);
    EXPECT_EQ(count(*folder->openCompany("Una"), "Centro"), 0);
}

TEST_F(DataFolderTest, WhatTheEngineSaidFollows) {
    const auto session = openCreated();
    engine(*session).database().execute(
        "CREATE TRIGGER lleno BEFORE INSERT ON Centro BEGIN SELECT RAISE(ABORT, 'no caben más centros'); END");
    EXPECT_EQ(sentenceOf([&] { insertCentre(*session, "x"); }),
              "La base de datos no admite el valor indicado: no caben más centros");
    const auto run = [&](const char* sql) { return sentenceOf([&] { session->Conexion()->run({sql, {}}); }); };
    EXPECT_PRED2(has, run("INSERT INTO KXComun.dbo.Pais (Pais_Cod) VALUES ('011')"),
                 "mismo valor: UNIQUE constraint failed: Pais.Pais_Cod");
    EXPECT_PRED2(has, run("UPDATE Nada SET x = 1"), "no entiende la sentencia: no such table: Nada");
}

TEST_F(DataFolderTest, NamesStayInsideTheFolder) {
    folder->create({.name = "../a/b: 100%.", .fiscalYear = 2026});
    EXPECT_FALSE(fs::exists(path.parent_path() / "a"));
    EXPECT_EQ(folder->list(), std::vector<std::string>{"../a/b: 100%."});
}

TEST_F(DataFolderTest, TheDemonstrationCompanyTakesIdentitiesThatAreThere) {
    folder->createDemonstration();
    fs::remove(path / "Empresa de demostración.db");
    const auto session = folder->open(folder->createDemonstration());
    EXPECT_EQ(count(*session, "KXComun.dbo.Nif"), 30);
    EXPECT_EQ(count(*session, "PCta WHERE Pcta_IdNif > 30"), 0);
}

TEST_F(DataFolderTest, ADemonstrationCompanyThatFailsLeavesNoIdentities) {
    const auto session = openCreated();
    sqlite::Database(path / "KXComun.db", sqlite::Database::Mode::Existing, shortWait).execute("DROP TABLE Masas");
    EXPECT_THROW(folder->createDemonstration(), ErrorBd);
    EXPECT_EQ(folder->list(), std::vector<std::string>{"Una"});
    EXPECT_EQ(count(*session, "KXComun.dbo.Nif"), 0);
}

TEST_F(DataFolderTest, AZeroByteInsideATextStays) {
    const auto session = openCreated();
    const std::string text("a\0b", 3);
    insertCentre(*session, text);
    EXPECT_EQ(session->Conexion()->Execute("SELECT Centro_Des FROM Centro")->cell(0, 0), Variant(text));
}

TEST_F(DataFolderTest, AWriteAheadLogIsTurnedBack) {
    engine(*openCreated()).database().execute("PRAGMA main.journal_mode = WAL; PRAGMA KXComun.journal_mode = WAL");
    const auto session = folder->openCompany("Una");
    insertCentre(*session, "x");
    EXPECT_FALSE(fs::exists(path / "Una.db-wal"));
    EXPECT_FALSE(fs::exists(path / "KXComun.db-wal"));
    for (const char* of : {"main", "KXComun"})
        EXPECT_EQ(engine(*session).database().number(std::string("PRAGMA ") + of + ".synchronous"), 3);
}

TEST_F(DataFolderTest, ASessionUsesTheConnectionItIsGiven) {
    openCreated();
    std::shared_ptr<ConexionBd> inner;
    const auto session = folder->openCompany("Una", [&](std::shared_ptr<ConexionBd> connection) {
        inner = std::move(connection);
        return sqlite::DataFolder(path).openCompany("Una")->Conexion();
    });
    ASSERT_TRUE(inner);
    EXPECT_NE(session->Conexion(), inner);
}

}  // namespace
}  // namespace FendaMaestros::tests
