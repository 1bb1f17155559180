#include <gtest/gtest.h>

#include "chart/CodigosCuenta.h"

namespace FendaMaestros::testing {
namespace {

TEST(AccountCode, IsCompletedToItsDigits) {
    struct {
        const char* rule;
        const char* typed;
        const char* code;
    } rows[] = {
        {"the comma stands for the missing zeros", "43,5", "43000005"},
        {"zeros on the right", "4300", "43000000"},
        {"digits behind the comma", "43,00012", "43000012"},
        {"another group", "572,1", "57200001"},
        {"one digit before the comma", "4,3", "40000003"},
        {"a comma at the end, where no next code is asked for", "430,", "43000000"},
        {"a comma in front", ",5", "00000005"},
        {"only the first comma", "43,5,1", "430005,1"},
        {"the comma in the place of one digit", "43,00005", "43000005"},
        {"complete already", "43000005", "43000005"},
        {"longer than the company's codes", "430000051", "430000051"},
        {"longer with its comma", "430000,051", "430000051"},
        {"nothing", "", ""},
        {"blanks", "  ", "  "},
    };
    for (const auto& row : rows) EXPECT_EQ(completedCode(row.typed, 8), row.code) << row.rule;
    EXPECT_EQ(completedCode("43,5", 12), "430000000005");

    EXPECT_TRUE(asksForNextCode("430,"));
    EXPECT_FALSE(asksForNextCode("43,0") || asksForNextCode(""));
}

TEST(AccountCode, FollowsTheHighestOfItsGroup) {
    const std::string refusal = "Código de cuenta erróneo %\r\n No es posible calcular el código de cuenta siguiente";
    struct {
        const char* rule;
        Variant highest;
        const char* prefix;
        const char* code;
        const char* refused;
    } rows[] = {
        {"first of a group", {}, "430", "43000001", ""},
        {"first of a longer group", {}, "5720", "57200001", ""},
        {"only one digit left", {}, "4300000", "43000001", ""},
        {"first of all", {}, "", "00000001", ""},
        {"one more", "43000017", "430", "43000018", ""},
        {"carries", "43000999", "430", "43001000", ""},
        {"leaves its group", "43099999", "430", "43100000", ""},
        {"grows a digit", "99999999", "9", "100000000", ""},
        {"leading zeros are lost", "00000017", "0", "18", ""},
        {"exact beyond 64 bits", "99999999999999999999", "9", "100000000000000000000", ""},
        {"the highest is no number", "4300000A", "430", "", "4300000A"},
        {"no room behind the prefix", {}, "43000000", "", "43000000"},
        {"a prefix longer than a code", {}, "430000001", "", "430000001"},
        {"a full prefix that exists", "43000000", "43000000", "43000001", ""},
    };
    for (const auto& row : rows) {
        const NextCode next = nextCode(row.highest, row.prefix, 8);
        EXPECT_EQ(next.code, row.code) << row.rule;
        std::string message = *row.refused ? refusal : "";
        if (*row.refused) message.replace(message.find('%'), 1, row.refused);
        EXPECT_EQ(next.refusal, message) << row.rule;
    }
    EXPECT_EQ(highestCodeSql("430"),
              "SELECT MAX(PCta_Cta) FROM Pcta WHERE PCta_SubCuenta=1 and substring(PCta_Cta,1,3) = '430'");
}

}  // namespace
}  // namespace FendaMaestros::testing
