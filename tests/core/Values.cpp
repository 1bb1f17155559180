#include "tests/support/DesktopTest.h"
#include "toolkit/Controls.h"
#include "toolkit/Format.h"
#include "toolkit/ListTyping.h"
#include "toolkit/Text.h"

namespace FendaMaestros::testing {
namespace {

class TypingOnAList : public DesktopTest {
protected:
    TypingOnAList() {
        for (const char* item : {"  - Ninguna", "04 - Alemania", "08 - Dinamarca", "41 - Sevilla", "252 - Gambia",
                                 "04 - Francia", "400 - Estados Unidos", "CJ - Callejón", "CL - Calle"})
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

    ComboBox list;
};

TEST_F(TypingOnAList, FindsItemsByTheirCodeAndByTheirName) {
    EXPECT_EQ(typed("41"), "41 - Sevilla");
    EXPECT_EQ(typed("25"), "252 - Gambia");
    EXPECT_EQ(typed("fran"), "04 - Francia");
    EXPECT_EQ(typed("ESTÁDOS"), "400 - Estados Unidos");
    EXPECT_EQ(typed("calle"), "CL - Calle") << "whole";
    EXPECT_EQ(typed("calleJo"), "CJ - Callejón");
    EXPECT_EQ(typed("0", 1), "08 - Dinamarca") << "the next one";
    EXPECT_EQ(typed("0", 5), "04 - Alemania") << "and round";
    EXPECT_EQ(typed("04", 5), "04 - Alemania");
    EXPECT_EQ(typed("44"), "400 - Estados Unidos") << "one character again and again";
    EXPECT_EQ(typed("x"), "");
    EXPECT_EQ(typed("4x", 3), "400 - Estados Unidos");
    list.Clear();
    EXPECT_EQ(typed("4"), "");
}

TEST_F(TypingOnAList, AListChoosesWhatItHasAndTellsOfIt) {
    int clicks = 0;
    list.Click = [&clicks] { ++clicks; };
    list.setListIndex(6);
    list.setListIndex(6);
    list.setListIndex(-1);
    EXPECT_EQ(clicks, 3);
    for (const int none : {-2, list.ListCount()}) EXPECT_THROW(list.setListIndex(none), std::out_of_range);
    list.setListIndex(3);
    list.Clear();
    EXPECT_EQ(list.ListIndex(), -1);
    EXPECT_EQ(list.Text(), "");
}

TEST(PastedText, BecomesOneLine) {
    const auto line = [](const char* pasted) { return text::oneLine(text::characters(pasted)); };
    EXPECT_EQ(line("\r\nB00000059\r\n"), U"B00000059");
    EXPECT_EQ(line("uno\t\ndos\a"), U"uno dos");
    EXPECT_EQ(line(" a ñ "), U" a ñ ");
    EXPECT_EQ(line("\n"), U"");
}

TEST(Texts, AreCountedInCharactersAndRaisedLetterByLetter) {
    EXPECT_EQ(text::upper("áñüçæøÿ÷ß ıĸŉ ĺľŀ źżž šœ a1z"), "ÁÑÜÇÆØŸ÷ß ıĸŉ ĹĽĿ ŹŻŽ ŠŒ A1Z");
    EXPECT_EQ(text::folded("ÁÑÜÇØŸÆ÷×ß Az"), "anucoŸæ÷×ß az");
    EXPECT_EQ(text::length("ñ€🐦a\xC3"), 5U);
    EXPECT_EQ(text::left("ñ€🐦a", 3), "ñ€🐦");
    EXPECT_EQ(text::trim(" \t a b \r\n"), "a b");
    EXPECT_EQ(text::trim(" \n"), "");
    EXPECT_EQ(text::replaced("a.b..c", ".", ","), "a,b,,c");
    for (const char* wrong : {"\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xFF", "a\xC3"})
        EXPECT_FALSE(text::isUtf8(wrong));
    EXPECT_TRUE(text::isUtf8("ñ€🐦"));
}

TEST(Numbers, AreReadFromTextsAndRoundedAwayFromZero) {
    const std::pair<Variant, std::int64_t> cases[] = {{"+7", 7},  {" 12a", 12}, {"", 0},    {"a", 0},     {"1e400", 0},
                                                      {"-3", -3}, {2.5, 3},     {-2.5, -3}, {"12.7", 13}, {{}, 0}};
    for (const auto& [value, integer] : cases) EXPECT_EQ(value.integer(), integer) << value.text();
}

TEST(Masks, ShowWhatTheyAreFor) {
    struct {
        Variant value;
        const char *mask, *shown;
    } cases[] = {{-1234567.891, "##,###,##0.00 ", "-1.234.567,89 "},
                 {-0.004, "#,##0.00", "0,00"},
                 {1000, "#,##0", "1.000"},
                 {999, "#,##0", "999"},
                 {7, "000", "007"},
                 {-7, "000", "-007"},
                 {"12", "0000", "0012"},
                 {"12a", "0000", "12a"},
                 {{}, "0000", ""},
                 {1.5, "%", "1.5"},
                 {"2026-11-22 10:00", "dd/mm/yyyy", "22/11/2026"},
                 {"2026-1-2", "dd/mm/yyyy", "2026-1-2"}};
    for (const auto& row : cases) EXPECT_EQ(format(row.value, row.mask), row.shown) << row.value.text();
}

}  // namespace
}  // namespace FendaMaestros::testing
