#include <algorithm>
#include <sstream>

#include "SessionContract.h"

namespace FendaMaestros::tests {
namespace {

/// What the screens send gives the same on every adapter as on the reference: columns and rows, in the same order. Only
/// rows that a falling order does not tell apart may come either way: an index that is read backwards turns them round.
class EqualAnswers : public ::testing::TestWithParam<Backend> {
protected:
    static std::vector<std::string> knownTexts() {
        std::vector<std::string> texts;
        for (const auto& [sql, rows] : screenTexts()) texts.emplace_back(sql);
        std::istringstream list{std::string(referenceData("textos"))};
        for (std::string line; std::getline(list, line);) texts.push_back(line.substr(line.find(' ') + 1));
        return texts;
    }
    /// A line for the names of the columns, expressions without a name left out, and one for each row, with what kind
    /// of value each is.
    static std::vector<std::string> linesOf(ConexionBd& connection, const std::string& sql) {
        const auto rows = connection.Execute(sql);
        std::vector<std::string> lines(1);
        for (int column = 0; column < rows->columnCount(); ++column)
            if (const auto name = rows->columnName(column); name.find('(') == std::string::npos)
                lines.front() += name + "|";
        for (int row = 0; row < rows->rowCount(); ++row) {
            auto& line = lines.emplace_back();
            for (int column = 0; column < rows->columnCount(); ++column) {
                const Variant cell = rows->cell(row, column);
                line += std::to_string(cell.storage().index()) + cell.text() + "|";
            }
        }
        return lines;
    }
    static std::shared_ptr<ConexionBd> demonstration(const Backend& backend) {
        const auto companies = backend.companies(std::chrono::seconds(1));
        auto connection = companies->open(companies->createDemonstration())->Conexion();
        return {connection.get(), [companies, connection](ConexionBd*) {}};
    }
};

TEST_P(EqualAnswers, ToEveryKnownTextOnTheDemonstration) {
    const auto first = demonstration(reference()), other = demonstration(GetParam());
    for (const auto& sql : knownTexts()) {
        SCOPED_TRACE(sql);
        auto expected = linesOf(*first, sql), given = linesOf(*other, sql);
        if (given != expected && sql.find(" DESC") != std::string::npos) {
            std::ranges::sort(expected);
            std::ranges::sort(given);
        }
        EXPECT_EQ(given, expected);
    }
}

INSTANTIATE_TEST_SUITE_P(, EqualAnswers, ::testing::ValuesIn(backends()), nameOf);

}  // namespace
}  // namespace FendaMaestros::tests
