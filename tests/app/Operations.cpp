#include "app/operations/Operations.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

/// The letter behind "&", in capitals; 0 when there is none.
char accelerator(const std::string& caption) {
    const std::size_t mark = caption.find('&');
    return mark == std::string::npos ? '\0' : text::upper(caption.substr(mark + 1, 1))[0];
}

TEST(Operations, EachIsReachedByAKeyAndALetterOfItsOwn) {
    std::set<std::pair<int, int>> keys;
    std::map<std::string, std::set<char>> letters;
    for (const Operation& operation : operations()) {
        EXPECT_TRUE(keys.emplace(operation.key.code, operation.key.shift).second) << operation.name;
        EXPECT_NE(accelerator(operation.caption), '\0') << operation.name;
        EXPECT_TRUE(letters[operation.group].insert(accelerator(operation.caption)).second) << operation.name;
        EXPECT_EQ(findOperation(text::upper(operation.name)), &operation);
    }
    std::set<char> menus{'E', 'Y'};  // those of the menus that stand around
    for (const auto& group : letters) EXPECT_TRUE(menus.insert(accelerator(group.first)).second) << group.first;
}

TEST(Operations, ThoseOfOneGroupStandTogether) {
    std::set<std::string> seen;
    std::string group;
    for (const Operation& operation : operations()) {
        if (operation.group == group) continue;
        EXPECT_TRUE(seen.insert(group = operation.group).second) << operation.name;
    }
}

TEST(Arguments, AFlagIsYesOrNoInAnyWriting) {
    const Arguments given({"SÍ", "si", "1", "No", "0", "quizá"});
    EXPECT_TRUE(given.flag(0, false) && given.flag(1, false) && given.flag(2, false));
    EXPECT_FALSE(given.flag(3, true) || given.flag(4, true));
    EXPECT_THROW(given.flag(5, false), std::invalid_argument);
    EXPECT_TRUE(given.flag(6, true));
}

}  // namespace

}  // namespace FendaMaestros
