#include "platform/sqlite/DataFolder.h"

#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <map>

#include "SessionContract.h"
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
    DataFolderTest() {
        std::string name = (fs::temp_directory_path() / "fendaXXXXXX").string();
        path = mkdtemp(name.data());
        folder = std::make_unique<DataFolder>(path, shortWait);
    }
    ~DataFolderTest() override {
        fs::permissions(path, fs::perms::owner_all);
        fs::remove_all(path);
    }

    std::unique_ptr<SesionBd> openCreated(const std::string& name = "Una") {
        folder->createCompany({.name = name, .fiscalYear = 2026});
        return folder->openCompany(name);
    }
    static void insertCentre(SesionBd& session, const std::string& name) {
        session.Conexion()->run({"INSERT INTO Centro (Centro_Des) VALUES (?)", {name}});
    }
    static std::int64_t count(SesionBd& session, const std::string& table) {
        return session.Conexion()->Execute("SELECT COUNT(*) FROM " + table)->cell(0, 0).integer();
    }
    static sqlite::SqliteConexion& engine(SesionBd& session) {
        return dynamic_cast<sqlite::SqliteConexion&>(*session.Conexion());
    }
    Kind openingError(const std::string& name) {
        return errorOf([&] { folder->openCompany(name); });
    }

    fs::path path;
    std::unique_ptr<DataFolder> folder;
};

TEST_F(DataFolderTest, FirstStartMakesADemonstrationCompany) {
    const DataFolder fresh(path / "nueva" / "carpeta");
    EXPECT_FALSE(fresh.exists());
    const auto session = fresh.openCompany(fresh.createDemo());
    const auto& parameters = session->Parametros();
    EXPECT_EQ(parameters.Item("Par_Nombre").Value, Variant("Empresa de demostración"));
    EXPECT_EQ(parameters.Item("Par_Ejercicio").Value, Variant(2026));
    EXPECT_EQ(parameters.Item("par_ctanum").Value, Variant(8));
    EXPECT_EQ(parameters.Item("Par_Provincia").Value, Variant(28));
    EXPECT_EQ(parameters.Item("PAR_ORCONTANOM").Value, Variant(0));
    for (const char* table : {"Centro", "Dpto"}) EXPECT_GE(count(*session, table), 10) << table;
    EXPECT_GE(count(*session, "KXComun.dbo.Pais"), 200);
    EXPECT_EQ(count(*session, "KXComun.dbo.Pais WHERE Pais_Cod = '011' AND Pais_Nom = 'España' AND Pais_Aeat = 'ES'"),
              1);
    EXPECT_EQ(count(*session, "KXComun.dbo.Conceptos WHERE Conce_Cod BETWEEN 94 AND 99"), 6);
    EXPECT_EQ(count(*session, "KXComun.dbo.Conceptos WHERE Conce_Cod BETWEEN 1001 AND 1006 AND Conce_Des LIKE '00_#%'"),
              6);
    for (const char* plan : {"1990", "2008"})
        EXPECT_GE(count(*session, std::string("KXComun.dbo.Masas WHERE Masas_Plan = ") + plan), 10);
    EXPECT_EQ(count(*session, "KXComun.dbo.Masas WHERE LEN(Masas_Des) > 50 OR Masas_AP NOT IN (1, 2, 3)"), 0);
    EXPECT_EQ(count(*session, "KXComun.dbo.PROV"), 53);
}

TEST_F(DataFolderTest, AnyNameMakesACompanyOfItsOwn) {
    const std::vector<std::string> names = {"../a/b: 100%.", ".oculta", "kxcomun", "Ñandú", "zeta"};
    for (const auto& name : names) folder->createCompany({.name = name, .fiscalYear = 2026});
    EXPECT_EQ(folder->companies(), names);
    for (const auto& name : names) {
        EXPECT_EQ(folder->openCompany(name)->Parametros().Item("Par_Nombre").Value, Variant(name));
        EXPECT_EQ(errorOf([&] { folder->createCompany({.name = name, .fiscalYear = 2026}); }), Kind::Constraint);
    }
    for (const std::string name : {"ÑANDÚ", "Zeta"})
        EXPECT_EQ(errorOf([&] { folder->createCompany({.name = name, .fiscalYear = 2026}); }), Kind::Constraint);
    EXPECT_FALSE(fs::exists(path.parent_path() / "a"));
}

TEST_F(DataFolderTest, RefusesDataThatMakeNoCompany) {
    const sqlite::CompanyData good = {.name = "Una", .fiscalYear = 2026};
    auto noName = good, noYear = good, digits = good, province = good, longName = good;
    noName.name = "  ";
    noYear.fiscalYear = 26;
    digits.accountDigits = 3;
    province.province = 53;
    longName.name = std::string(1000, 'x');
    for (const auto& bad : {noName, noYear, digits, province, longName})
        EXPECT_EQ(errorOf([&] { folder->createCompany(bad); }), Kind::Refused);
    EXPECT_TRUE(fs::is_empty(path));
}

TEST_F(DataFolderTest, CompaniesShareOneDatabase) {
    const auto one = openCreated("Una"), other = openCreated("Otra");
    insertCentre(*one, "solo aquí");
    one->Conexion()->run({"UPDATE KXComun.dbo.Pais SET Pais_Nom = ? WHERE Pais_Cod = ?", {"Reino de España", "011"}});
    EXPECT_EQ(count(*other, "Centro"), 0);
    EXPECT_EQ(count(*other, "KXComun.dbo.Pais WHERE Pais_Nom = 'Reino de España'"), 1);
}

TEST_F(DataFolderTest, SaysWhyACompanyCannotBeOpened) {
    openCreated();
    EXPECT_EQ(openingError("Ninguna"), Kind::NotADatabase);
    EXPECT_EQ(errorOf([&] { DataFolder(path / "falta").openCompany("Una"); }), Kind::NotADatabase);
    EXPECT_EQ(errorOf([&] { DataFolder(path / "falta").companies(); }), Kind::NotADatabase);

    std::ofstream(path / "Texto.db") << std::string(5000, 'x');
    std::ofstream(path / "Vacia.db");
    fs::copy(path / "KXComun.db", path / "Comun.db");
    for (const char* name : {"Texto", "Vacia", "Comun"}) EXPECT_EQ(openingError(name), Kind::NotADatabase) << name;

    folder->createCompany({.name = "Futura", .fiscalYear = 2026});
    engine(*folder->openCompany("Futura")).database().execute("PRAGMA main.user_version = 99");
    EXPECT_EQ(openingError("Futura"), Kind::NewerVersion);
    engine(*folder->openCompany("Una")).database().execute("PRAGMA KXComun.user_version = 99");
    EXPECT_EQ(openingError("Una"), Kind::NewerVersion);
    std::ofstream(path / "KXComun.db") << std::string(5000, 'x');
    EXPECT_EQ(openingError("Una"), Kind::NotADatabase);
    fs::remove(path / "KXComun.db");
    EXPECT_EQ(openingError("Una"), Kind::NotADatabase);
}

TEST_F(DataFolderTest, WithoutTheRightToWriteNothingChanges) {
    const auto before = openCreated();
    fs::permissions(path, static_cast<fs::perms>(0555));
    const WithoutPrivileges without;
    const auto session = folder->openCompany("Una");
    EXPECT_EQ(errorOf([&] { insertCentre(*session, "x"); }), Kind::ReadOnly);
    EXPECT_EQ(count(*session, "Centro"), 0);
    EXPECT_EQ(errorOf([&] { folder->createCompany({.name = "Otra", .fiscalYear = 2026}); }), Kind::ReadOnly);
    EXPECT_EQ(errorOf([&] { DataFolder(path / "nueva").createDemo(); }), Kind::ReadOnly);
    EXPECT_EQ(folder->companies(), std::vector<std::string>{"Una"});
}

TEST_F(DataFolderTest, AFolderThatCannotBeReadIsNotTakenForAMissingOne) {
    openCreated();
    fs::permissions(path, fs::perms::none);
    const WithoutPrivileges without;
    EXPECT_EQ(openingError("Una"), Kind::ReadOnly);
    EXPECT_EQ(errorOf([&] { folder->companies(); }), Kind::ReadOnly);
}

TEST_F(DataFolderTest, ProgramsThatCreateAtOnceDoNotHarmEachOther) {
    std::vector<pid_t> programs;
    for (const char* name : {"Misma", "Misma", "misma", "Otra", "Tercera"}) {
        const pid_t program = ::fork();
        if (program == 0) {
            try {
                folder->createCompany({.name = name, .fiscalYear = 2026});
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
    const auto made = folder->companies();
    EXPECT_EQ(static_cast<int>(made.size()), ended[0]);
    for (const auto& name : made) EXPECT_EQ(count(*folder->openCompany(name), "Centro"), 0);
}

TEST_F(DataFolderTest, ASharedDatabaseThatCannotBeUsedRefusesNewCompanies) {
    openCreated();
    std::ofstream(path / "KXComun.db", std::ios::trunc) << "esto no es una base de datos";
    EXPECT_EQ(errorOf([&] { folder->createCompany({.name = "Dos", .fiscalYear = 2026}); }), Kind::NotADatabase);
    EXPECT_EQ(folder->companies(), std::vector<std::string>{"Una"});
}

TEST_F(DataFolderTest, AHalfMadeCompanyIsNotThere) {
    openCreated();
    const std::string aside = "Otra.db.nueva" + std::to_string(::getpid());
    fs::create_directories(path / aside / "ocupada");
    EXPECT_THROW(folder->createCompany({.name = "Otra", .fiscalYear = 2026}), ErrorBd);
    EXPECT_EQ(folder->companies(), std::vector<std::string>{"Una"});
    fs::remove_all(path / aside);
    std::ofstream(path / aside) << "restos";
    std::ofstream(path / (aside + "-journal")) << "restos";
    folder->createCompany({.name = "Otra", .fiscalYear = 2026});
    EXPECT_FALSE(fs::exists(path / aside));
    EXPECT_EQ(count(*folder->openCompany("Otra"), "Centro"), 0);
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
    connection.RollbackTrans();
    connection.RollbackTrans();
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
    other->Conexion()->RollbackTrans();
    EXPECT_EQ(count(*other, "Centro"), 0);
    one->Conexion()->CommitTrans();
    insertCentre(*other, "segunda");
    EXPECT_EQ(count(*one, "Centro"), 2);
}

TEST_F(DataFolderTest, AWriteAheadLogIsTurnedBack) {
    engine(*openCreated()).database().execute("PRAGMA main.journal_mode = WAL; PRAGMA KXComun.journal_mode = WAL");
    const auto session = folder->openCompany("Una");
    insertCentre(*session, "x");
    EXPECT_FALSE(fs::exists(path / "Una.db-wal"));
    EXPECT_FALSE(fs::exists(path / "KXComun.db-wal"));
    EXPECT_EQ(engine(*session).database().number("PRAGMA KXComun.synchronous"), 2);
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
