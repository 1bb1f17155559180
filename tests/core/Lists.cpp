#include <gtest/gtest.h>

#include "tests/support/ScriptedPerson.h"
#include "toolkit/ListTyping.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

class TypingOnAList : public ::testing::Test {
protected:
    TypingOnAList() {
        for (const char* item : {"  - Ninguna", "04 - Alemania", "08 - Dinamarca", "41 - Sevilla", "252 - Gambia",
                                 "04 - Francia", "400 - Estados Unidos"})
            list.AddItem(item);
    }

    /// The name of the item that the text leads to, typed without a pause.
    std::string typed(const char* text, int current = -1) {
        ListTyping typing(desktop);
        for (const char32_t character : text::characters(text)) {
            const int found = typing.next(list, current, character);
            if (found >= 0) current = found;
        }
        return current < 0 ? "" : list.List(current);
    }

    testing::ScriptedPerson person;
    HeadlessDesktop desktop{person};
    ComboBox list;
};

TEST_F(TypingOnAList, FindsItemsByTheirCodeAndByTheirName) {
    EXPECT_EQ(typed("41"), "41 - Sevilla");
    EXPECT_EQ(typed("25"), "252 - Gambia");
    EXPECT_EQ(typed("fran"), "04 - Francia");
    EXPECT_EQ(typed("ESTÁDOS"), "400 - Estados Unidos");
    EXPECT_EQ(typed("0", 1), "08 - Dinamarca") << "the next one";
    EXPECT_EQ(typed("0", 5), "04 - Alemania") << "and round";
    EXPECT_EQ(typed("04", 5), "04 - Alemania");
    EXPECT_EQ(typed("44"), "400 - Estados Unidos") << "one character again and again";
    EXPECT_EQ(typed("x"), "");
    EXPECT_EQ(typed("4x", 3), "400 - Estados Unidos");
    list.Clear();
    EXPECT_EQ(typed("4"), "");
}

TEST(PastedText, BecomesOneLine) {
    const auto line = [](const char* pasted) { return text::oneLine(text::characters(pasted)); };
    EXPECT_EQ(line("\r\nB00000059\r\n"), U"B00000059");
    EXPECT_EQ(line("uno\t\ndos\a"), U"uno dos");
    EXPECT_EQ(line(" a ñ "), U" a ñ ");
    EXPECT_EQ(line("\n"), U"");
}

}  // namespace

}  // namespace FendaMaestros
