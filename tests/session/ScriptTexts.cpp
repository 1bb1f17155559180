#include <filesystem>
#include <fstream>
#include <list>
#include <map>
#include <regex>

#include "SessionContract.h"

namespace FendaMaestros::tests {
namespace {

class ScriptTexts : public SessionContract {};

/// A text without what a person types: literals are alike.
std::string withoutLiterals(const std::string& sql) {
    static const std::regex literal("'([^']|'')*'|\\b[0-9]+(\\.[0-9]+)?\\b");
    return std::regex_replace(sql, literal, "?");
}

/// The reads that the screens carry out in the scripts, as their outputs trace them, by what they are without literals.
std::map<std::string, std::string> tracedReads() {
    std::map<std::string, std::string> reads;
    for (const auto& file : std::filesystem::directory_iterator(FENDA_TESTS "/guiones")) {
        if (file.path().extension() != ".salida") continue;
        std::ifstream output(file.path());
        for (std::string line, before; std::getline(output, line); before = line) {
            const std::string text = line.starts_with("traza ") ? line.substr(6) : "";
            // What the script itself reads is not the screens'.
            if (before.starts_with("> sql") || before.starts_with("> comprobar sql")) continue;
            if (text.starts_with("SELECT") || text.starts_with("Select")) reads.emplace(withoutLiterals(text), text);
        }
    }
    return reads;
}

/// The texts of the screens that scripts go through, and the rows that each gives on insertCompany().
std::map<std::string, ScreenText> knownReads(std::list<std::string>& lines) {
    std::map<std::string, ScreenText> known;
    std::ifstream list(FENDA_TESTS "/session/textos.txt");
    for (std::string line; std::getline(list, line);) {
        lines.push_back(line.substr(line.find(' ') + 1));
        known.emplace(withoutLiterals(lines.back()), ScreenText{lines.back().c_str(), std::stoi(line)});
    }
    return known;
}

TEST_P(ScriptTexts, AreKnownAndGiveTheRowsOfTheCompany) {
    insertCompany();
    std::list<std::string> lines;
    const auto known = knownReads(lines);
    const auto traced = tracedReads();
    for (const auto& [text, sql] : traced)
        EXPECT_TRUE(known.contains(text)) << "not in textos.txt:\n" << read(sql)->RecordCount() << " " << sql;
    for (const auto& [text, screen] : known) {
        EXPECT_TRUE(traced.contains(text)) << "no script reads\n" << screen.sql;
        EXPECT_EQ(read(screen.sql)->RecordCount(), screen.rows) << screen.sql;
    }
}

INSTANTIATE_TEST_SUITE_P(, ScriptTexts, ::testing::ValuesIn(backends()), nameOf);

}  // namespace
}  // namespace FendaMaestros::tests
