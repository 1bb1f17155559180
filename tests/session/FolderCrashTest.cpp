#include <csignal>
#include <map>
#include <random>
#include <thread>

#include "DataFolderFixture.h"

namespace FendaMaestros::tests {
namespace {

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

}  // namespace
}  // namespace FendaMaestros::tests
