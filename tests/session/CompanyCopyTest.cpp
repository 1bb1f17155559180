#include "storage/CompanyCopy.h"

#include <algorithm>
#include <map>

#include "SessionContract.h"
#include "storage/Schema.h"

namespace FendaMaestros::tests {
namespace {

using namespace std::chrono_literals;

/// From the adapter of the first name to that of the second, and back.
class CompanyCopy : public ::testing::TestWithParam<std::tuple<Backend, Backend>> {
protected:
    static void copy(Companies& from, Companies& to, const std::string& name) {
        const bool first = !to.exists() || to.list().empty();
        const auto origin = from.open(name);
        to.receive(name, [&](ConexionBd& empty) {
            storage::copyCompany(*origin->Conexion(), empty, first, [](std::string_view, std::int64_t) {});
        });
    }
    /// Every row of every table, with what kind of value each cell is, in the order of its bytes.
    static std::map<std::string, std::vector<std::string>> rowsOf(Companies& companies, const std::string& name) {
        std::map<std::string, std::vector<std::string>> rows;
        const auto session = companies.open(name);
        for (const auto& [place, schema] :
             {std::pair{"", storage::companySchema()}, std::pair{"KXComun.dbo.", storage::sharedSchema()}})
            for (const auto& table : schema.tables) {
                const auto all = session->Conexion()->Execute("SELECT * FROM " + (place + std::string(table.name)));
                auto& texts = rows[std::string(table.name)];
                for (int row = 0; row < all->rowCount(); ++row) {
                    std::string& text = texts.emplace_back();
                    for (int column = 0; column < all->columnCount(); ++column) {
                        const Variant cell = all->cell(row, column);
                        text += std::to_string(cell.storage().index()) + cell.text() + "|";
                    }
                }
                std::ranges::sort(texts);
            }
        return rows;
    }
    static void write(Companies& companies, const std::string& name, const std::string& sql) {
        companies.open(name)->Conexion()->run({sql, {}});
    }

    const std::shared_ptr<Companies> here = std::get<0>(GetParam()).companies(30ms);
    const std::shared_ptr<Companies> there = std::get<1>(GetParam()).companies(30ms);
    const std::shared_ptr<Companies> home = std::get<0>(GetParam()).companies(30ms);
};

TEST_P(CompanyCopy, ThereAndBackEveryRowIsTheSame) {
    const std::string name = here->createDemonstration();
    write(*here, name, "DELETE FROM PCta WHERE PCta_Id IN (4, 5)");
    write(*here, name, "UPDATE PCta SET PCta_Des = 'L''Hospitalet  ñ ', PCta_CtaAso = NULL WHERE PCta_Id = 7");
    write(*here, name, "UPDATE KXComun.dbo.Conceptos SET Conce_Des = 'Otro' WHERE Conce_Cod = 94");
    const auto before = rowsOf(*here, name);
    copy(*here, *there, name);
    EXPECT_EQ(rowsOf(*there, name).at("PCta"), before.at("PCta"));
    copy(*there, *home, name);
    EXPECT_EQ(rowsOf(*home, name), before);

    // What is new at the goal comes above what was copied.
    const auto connection = there->open(name)->Conexion();
    const auto last = connection->Execute("SELECT MAX(Apu_Id) FROM Apu")->cell(0, 0).integer();
    connection->run({"INSERT INTO Apu (Apu_Cta) VALUES ('4')", {}});
    EXPECT_GT(connection->Execute("SELECT MAX(Apu_Id) FROM Apu")->cell(0, 0).integer(), last);
}

TEST_P(CompanyCopy, SharedDataOfOthersAreAddedToAndNeverReplaced) {
    const std::string name = here->createDemonstration();
    there->create({.name = "Otra", .fiscalYear = 2026});
    write(*there, "Otra", "INSERT INTO KXComun.dbo.Nif (Nif_Id, Nif_Doc) VALUES (900, 'SUYA')");
    copy(*here, *there, name);
    EXPECT_EQ(
        there->open(name)->Conexion()->Execute("SELECT Nif_Doc FROM KXComun.dbo.Nif WHERE Nif_Id = 900")->cell(0, 0),
        Variant("SUYA"));

    write(*here, name, "UPDATE KXComun.dbo.Nif SET Nif_Nom = 'Distinto' WHERE Nif_Id = 3");
    here->create({.name = "Tercera", .fiscalYear = 2026});
    const auto before = rowsOf(*there, name);
    EXPECT_EQ(errorOf([&] { copy(*here, *there, "Tercera"); }), ErrorBd::Kind::Constraint);
    EXPECT_EQ(errorOf([&] { copy(*here, *there, name); }), ErrorBd::Kind::Constraint);
    EXPECT_EQ(there->list(), (std::vector<std::string>{name, "Otra"}));
    EXPECT_EQ(rowsOf(*there, name), before);
}

INSTANTIATE_TEST_SUITE_P(Adapters, CompanyCopy,
                         ::testing::Combine(::testing::ValuesIn(backends()), ::testing::ValuesIn(backends())),
                         [](const auto& chosen) {
                             return std::get<0>(chosen.param).name + "To" + std::get<1>(chosen.param).name;
                         });

}  // namespace
}  // namespace FendaMaestros::tests
