#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include "tests/support/Clerks.h"

namespace FendaMaestros::testing {
namespace {

TEST(Reliability, AKilledClerkLeavesEverySaveWholeOrAbsentAndNothingInTheWay) {
    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    const KillReport killed = KilledClerks(20).work(seed);
    EXPECT_EQ(killed.faults, std::vector<std::string>());
    EXPECT_GE(killed.saves, 60);
    EXPECT_GE(killed.kills, 3);
}

/// Gives the other clerk time between the look for the code and the transaction.
class Hesitating final : public FailingConexion {
public:
    using FailingConexion::FailingConexion;
    void BeginTrans() override {
        std::this_thread::sleep_for(std::chrono::milliseconds(random_() % 10));
        FailingConexion::BeginTrans();
    }

private:
    std::mt19937 random_{static_cast<unsigned>(getpid())};
};

TEST(Reliability, TwoClerksInOneGroupNeverGiveACodeTwiceAndLoseNoSaveInSilence) {
    constexpr int attempts = 25;
    const Office office;
    office.open()->Conexion()->run(
        {"INSERT INTO KXComun.dbo.Nif (Nif_TipDoc, Nif_Doc, Nif_Nom) VALUES (3, 'A', 'A')", {}});
    const auto work = [&](const std::string& who) {
        return [&office, who](const ChildProcess::Tell& tell) {
            Clerk clerk(office, std::chrono::seconds(20), [](std::shared_ptr<ConexionBd> connection) {
                return std::make_shared<Hesitating>(std::move(connection));
            });
            for (int attempt = 1; attempt <= attempts; ++attempt) {
                const std::string name = who + std::to_string(attempt);
                try {
                    tell(clerk.saveCustomer(name, "A") + " " + name);
                } catch (const std::runtime_error& message) {
                    tell(std::string("refused: ") + message.what());
                }
            }
        };
    };
    ChildProcess first(work("Ana ")), second(work("Luis "));
    auto told = first.end(false);
    for (const auto& line : second.end(false)) told.push_back(line);

    std::multiset<std::string> saved, stored;
    for (const auto& line : told) {
        if (line.starts_with("430")) {
            saved.insert(line);
            continue;
        }
        EXPECT_TRUE(line.starts_with("refused: Error en la grabación de la cuenta")) << line;
    }
    std::set<std::string> codes;
    const auto rows = office.open()->Conexion()->Execute(
        "SELECT PCta_Cta, PCta_Des FROM PCta WHERE PCta_Subcuenta = 1 ORDER BY PCta_Cta");
    for (int row = 0; row < rows->rowCount(); ++row) {
        codes.insert(rows->cell(row, 0).text());
        stored.insert(rows->cell(row, 0).text() + " " + rows->cell(row, 1).text());
    }
    EXPECT_EQ(told.size(), 2U * attempts);
    EXPECT_EQ(saved, stored);
    EXPECT_EQ(codes.size(), stored.size()) << "a code was given twice";
    EXPECT_GT(saved.size(), static_cast<std::size_t>(attempts) / 2);
}

TEST(Reliability, ClerksWhoChangeDifferentRowsWaitForEachOther) {
    constexpr int changes = 12;
    const Office office(2, 50);
    const auto work = [&](int account) {
        return [&office, account](const ChildProcess::Tell& tell) {
            Clerk clerk(office, std::chrono::seconds(5));
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

    YearEnd() {
        const auto session = office.open();
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
        Clerk clerk(office, std::chrono::seconds(5));
        tell("ready");
        clerk.changeDocument("ANTES", "DESPUES");
        tell("changed");
        clerk.deleteUnused();
        tell("deleted");
    }

    /// What is wrong with what a clerk has left who told `lines`; empty when every step is whole or absent.
    std::string faults(const std::vector<std::string>& lines) const {
        Clerk next(office, std::chrono::milliseconds(100));
        const auto count = [&](const std::string& sql) { return static_cast<int>(next.engine().number(sql)); };
        const int left = count("SELECT COUNT(*) FROM PCta WHERE PCta_Des = 'Sobra'"),
                  changed = count("SELECT COUNT(*) FROM Fac WHERE Fac_Doc = 'DESPUES' AND Fac_Rsocial = 'Ana'"),
                  unchanged = count("SELECT COUNT(*) FROM Fac WHERE Fac_Doc = 'ANTES' AND Fac_Rsocial = ''");
        const bool renamed = count("SELECT COUNT(*) FROM KXComun.Nif WHERE Nif_Doc = 'DESPUES'") == 1;
        std::string found;
        if (count("SELECT COUNT(*) FROM pragma_integrity_check WHERE integrity_check <> 'ok'") != 0)
            found += "integrity. ";
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
        for (const auto& copy : std::filesystem::directory_iterator(office.path() / "eliminadas")) {
            std::ifstream file(copy.path());
            for (std::string line; std::getline(file, line);) rows += line.find(";Sobra;") != std::string::npos;
        }
        return rows;
    }

    Office office;
};

TEST(Reliability, AKilledClerkDeletesAndChangesEverythingOrNothing) {
    std::chrono::duration<double> whole{};
    {
        const YearEnd year;
        std::vector<std::string> told;
        const auto start = std::chrono::steady_clock::now();
        year.work([&](const std::string& line) { told.push_back(line); });
        whole = std::chrono::steady_clock::now() - start;
        ASSERT_EQ(year.faults(told), "");
    }

    const unsigned seed = std::random_device()();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> moment(0, whole.count() / 2);
    int cut = 0;
    for (int kill = 0; kill < 8; ++kill) {
        const YearEnd year;
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

}  // namespace
}  // namespace FendaMaestros::testing
