#include <gtest/gtest.h>

#include <fstream>

#include "tests/support/Team.h"
#ifdef FENDA_WITH_POSTGRES
#include "tests/support/CutConnections.h"
#endif

namespace FendaMaestros::testing {
namespace {

/// On every kind of place.
class Reliability : public ::testing::TestWithParam<PlaceKind> {
protected:
    const unsigned seed = std::random_device()();
    ::testing::ScopedTrace trace{__FILE__, __LINE__, "seed " + std::to_string(seed)};

    std::unique_ptr<Place> place() const { return GetParam().make(); }
};
INSTANTIATE_TEST_SUITE_P(, Reliability, ::testing::ValuesIn(placeKinds()),
                         [](const auto& chosen) { return chosen.param.name; });

TEST_P(Reliability, AKilledClerkLeavesEverySaveWholeOrAbsentAndNothingInTheWay) {
    const KillReport killed = KilledClerks(place(), 20).work(seed);
    EXPECT_EQ(killed.faults, std::vector<std::string>());
    EXPECT_GE(killed.saves, 60);
    EXPECT_GE(killed.kills, 3);
}

/// Gives the other clerks time between the look for the code and the transaction, and in front of its end.
class Hesitating final : public FailingConexion {
public:
    using FailingConexion::FailingConexion;
    void BeginTrans() override {
        hesitate();
        FailingConexion::BeginTrans();
    }
    void CommitTrans() override {
        hesitate();
        FailingConexion::CommitTrans();
    }

private:
    void hesitate() { std::this_thread::sleep_for(std::chrono::milliseconds(random_() % 10)); }

    std::mt19937 random_{static_cast<unsigned>(getpid())};
};

TEST_P(Reliability, ClerksInOneGroupNeverGetACodeTwiceAndLoseNoSaveInSilence) {
    constexpr int saves = 5;
    const auto hesitate = [](std::shared_ptr<ConexionBd> connection) {
        return std::make_shared<Hesitating>(std::move(connection));
    };
    const auto report =
        Team(place(), {.saves = saves, .wait = std::chrono::seconds(20), .wrap = hesitate}).createAccounts(true);
    EXPECT_EQ(report.faults, std::vector<std::string>());
    EXPECT_EQ(report.saved, saves * Team::clerks);
}

TEST_P(Reliability, KilledClerksAndACrashedServerLoseNoSaveOfTheOthersInSilence) {
    const bool oneGroup = seed % 2 == 0;
    const auto created =
        Team(place(), {.saves = 12, .killedClerks = 4, .crashes = 1, .seed = seed}).createAccounts(oneGroup);
    EXPECT_EQ(created.faults, std::vector<std::string>());
    EXPECT_GT(created.saved, 12 * Team::clerks / 2);
}

TEST_P(Reliability, ClerksWhoChangeTheSameAccountsOverwriteNoChangeOfAnother) {
    const auto changed = Team(place(), {.saves = 6, .killedClerks = 2, .crashes = 1, .seed = seed}).changeAccounts();
    EXPECT_EQ(changed.faults, std::vector<std::string>());
    EXPECT_GT(changed.saved, 6 * Team::clerks / 2);
}

TEST_P(Reliability, ClerksWhoChangeDifferentRowsWaitForEachOther) {
    constexpr int changes = 12;
    const Office office(place(), 2, 50);
    const auto work = [&](int account) {
        return [&office, account](const ChildProcess::Tell& tell) {
            Clerk clerk(*office.place);
            for (int change = 1; change <= changes; ++change) {
                clerk.rename(Office::bankCode(account), "Banco " + std::to_string(change));
                tell("saved");
            }
        };
    };
    ChildProcess first(work(1)), second(work(2));
    const std::vector<std::string> all(changes, "saved");
    EXPECT_EQ(first.end(false), all);
    EXPECT_EQ(second.end(false), all);
}

/// An office at the close of the year: wrong accounts that nobody uses, and an identity "Antes" with invoices.
class YearEnd {
public:
    static constexpr int accounts = 300, invoices = 500;

    explicit YearEnd(std::unique_ptr<Place> place) : office(std::move(place)) {
        const auto session = office.place->open();
        ConexionBd& connection = *session->Conexion();
        connection.BeginTrans();
        for (int account = 1; account <= accounts; ++account)
            connection.run(
                {"INSERT INTO PCta (PCta_Cta, PCta_Des, PCta_Subcuenta, PCta_bActiva) VALUES (?, 'Sobra', 1, 1)",
                 {std::to_string(account)}});
        connection.run({"INSERT INTO KXComun.dbo.Nif (Nif_TipDoc, Nif_Doc, Nif_Nom) VALUES (3, 'ANTES', 'Ana')", {}});
        for (int invoice = 0; invoice < invoices; ++invoice)
            connection.run(
                {"INSERT INTO Fac (Fac_Doc, Fac_Rsocial, Fac_Fecha) VALUES ('ANTES', '', '2026-03-01')", {}});
        connection.CommitTrans();
    }

    void work(const ChildProcess::Tell& tell) const {
        Clerk clerk(*office.place);
        tell("ready");
        clerk.changeDocument("ANTES", "DESPUES");
        tell("changed");
        clerk.deleteUnused();
        tell("deleted");
    }

    /// What is wrong with what a clerk has left who told `lines`; empty when every step is whole or absent.
    std::string faults(const std::vector<std::string>& lines) const {
        office.place->settle();
        Clerk next(*office.place, std::chrono::milliseconds(100));
        const auto count = [&](const std::string& sql) { return next.number(sql); };
        const int left = count("SELECT COUNT(*) FROM PCta WHERE PCta_Des = 'Sobra'"),
                  changed = count("SELECT COUNT(*) FROM Fac WHERE Fac_Doc = 'DESPUES' AND Fac_Rsocial = 'Ana'"),
                  unchanged = count("SELECT COUNT(*) FROM Fac WHERE Fac_Doc = 'ANTES' AND Fac_Rsocial = ''");
        const bool renamed = count("SELECT COUNT(*) FROM KXComun.dbo.Nif WHERE Nif_Doc = 'DESPUES'") == 1;
        std::string found;
        office.place->companies({})->examine(Place::company, [&](const std::string& fault) { found += fault + ". "; });
        if (left != 0 && left != accounts) found += std::to_string(left) + " accounts are left. ";
        if (left == 0 && copied() != accounts) found += std::to_string(copied()) + " accounts are in the copy. ";
        if (changed + unchanged != invoices || (renamed ? unchanged : changed) != 0)
            found += "register and invoices do not agree. ";
        if (lines.size() > 1 && !renamed) found += "a change that was told is lost. ";
        if (lines.size() > 2 && left != 0) found += "a deletion that was told is lost. ";
        if (!lines.empty() && lines.back().front() == '!') found += lines.back();
        return found;
    }

private:
    /// Rows in the file with what was deleted.
    int copied() const {
        int rows = 0;
        for (const auto& copy : std::filesystem::directory_iterator(office.place->folder() / "eliminadas")) {
            std::ifstream file(copy.path());
            for (std::string line; std::getline(file, line);) rows += line.find(";Sobra;") != std::string::npos;
        }
        return rows;
    }

    Office office;
};

TEST_P(Reliability, AKilledClerkDeletesAndChangesEverythingOrNothing) {
    std::chrono::duration<double> whole{};
    {
        const YearEnd year(place());
        std::vector<std::string> told;
        const auto start = std::chrono::steady_clock::now();
        year.work([&](const std::string& line) { told.push_back(line); });
        whole = std::chrono::steady_clock::now() - start;
        ASSERT_EQ(year.faults(told), "");
    }

    std::mt19937 random(seed);
    std::uniform_real_distribution<double> moment(0, whole.count() / 2);
    int cut = 0;
    for (int kill = 0; kill < 8; ++kill) {
        const YearEnd year(place());
        ChildProcess clerk([&](const ChildProcess::Tell& tell) { year.work(tell); });
        // Every second one falls into the deletion.
        for (int line = 0; line <= kill % 2; ++line) clerk.awaitLine();
        std::this_thread::sleep_for(std::chrono::duration<double>(moment(random)));
        const auto told = clerk.end(true);
        cut += told.back() != "deleted";
        EXPECT_EQ(year.faults(told), "") << "kill " << kill;
    }
    EXPECT_GT(cut, 0) << "nobody was killed at work";
}

#ifdef FENDA_WITH_POSTGRES
TEST(ReliabilityOnPostgres, AConnectionCutAtAnyByteLosesNoSaveInSilenceAndStoresNoneTwice) {
    if (!tests::PostgresServer::installed()) GTEST_SKIP() << "PostgreSQL is not installed";
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    const auto report = CutClerk(200).work(seed);
    EXPECT_EQ(report.faults, std::vector<std::string>());
    EXPECT_EQ(report.cuts, 200);
    EXPECT_GT(report.triedAgain, 20);
}

TEST(ReliabilityOnPostgres, OpeningAnAccountAndSavingItTakeFewTripsToTheServer) {
    if (!tests::PostgresServer::installed()) GTEST_SKIP() << "PostgreSQL is not installed";
    const Office office(std::make_unique<ServerPlace>(), 1, 50);
    const ThroughProxy through(dynamic_cast<const ServerPlace&>(*office.place));
    Clerk clerk(through);
    through.proxy.letPass();
    clerk.whenSaving = [&] {
        EXPECT_LE(through.proxy.traffic().trips, 12) << "opened";
        through.proxy.letPass();
    };
    clerk.rename(Office::bankCode(1), "Nueva");
    EXPECT_LE(through.proxy.traffic().trips, 12) << "saved";
    EXPECT_GE(through.proxy.traffic().trips, 2) << "counted";
}

TEST(ServerOfClerks, IsInstalled) {
    if (!tests::PostgresServer::installed()) GTEST_SKIP() << "PostgreSQL is not installed";
}
#endif

}  // namespace
}  // namespace FendaMaestros::testing
