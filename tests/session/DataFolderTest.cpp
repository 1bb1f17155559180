#include "DataFolderFixture.h"
#include "platform/sqlite/Collation.h"

namespace FendaMaestros::tests {
namespace {

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

TEST_F(DataFolderTest, AFolderThatCannotBeReadIsNotTakenForAMissingOne) {
    openCreated();
    fs::permissions(path, fs::perms::none);
    const WithoutPrivileges without;
    EXPECT_EQ(openingError("Una"), Kind::ReadOnly);
    EXPECT_EQ(errorOf([&] { folder->list(); }), Kind::ReadOnly);
    EXPECT_TRUE(sentenceOf([&] { folder->list(); }).ends_with("»: falta el permiso."));
}

TEST_F(DataFolderTest, ASharedDatabaseThatCannotBeUsedRefusesNewCompanies) {
    openCreated();
    std::ofstream(path / "KXComun.db", std::ios::trunc) << "esto no es una base de datos";
    EXPECT_EQ(errorOf([&] { folder->create({.name = "Dos", .fiscalYear = 2026}); }), Kind::NotADatabase);
    EXPECT_EQ(folder->list(), std::vector<std::string>{"Una"});
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
