#include <csignal>
#include <map>
#include <thread>

#include "DataFolderFixture.h"

namespace FendaMaestros::tests {
namespace {

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

}  // namespace
}  // namespace FendaMaestros::tests
