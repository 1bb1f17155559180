#include <gtest/gtest.h>

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

}  // namespace
}  // namespace FendaMaestros::testing
