#include "session/AyudaCampos.h"
#include "tests/support/DesktopTest.h"

namespace FendaMaestros::testing {
namespace {

class Fields : public DesktopTest {
protected:
    AyudaCampos help{desktop};
    TextBox field;

    std::string leftUnder(const char* mask, std::string typed) {
        field.Text = std::move(typed);
        help.SalirCampo(field, mask, 0);
        return field.Text;
    }
};

TEST_F(Fields, ShowWhereTheFocusIs) {
    help.ColorFoco = 65535;
    field.Text = " 7,5 ";
    help.EntrarCampo(field, "", 0);
    EXPECT_EQ(field.BackColor, 65535U);
    EXPECT_TRUE(field.AllSelected);
    help.SalirCampo(field, "", 0);
    EXPECT_EQ(field.BackColor, 16777215U);
    EXPECT_FALSE(field.AllSelected);
    EXPECT_EQ(field.Text, " 7,5 ") << "without a mask the text stays";
}

TEST_F(Fields, AmountsAreReadAsSpanishWritesThem) {
    const std::pair<const char*, const char*> cases[] = {
        {"1234,5", "1.234,50"},
        {"-1.234.567,895", "-1.234.567,90"},
        {"1.234", "1.234,00"},
        {"-7", "-7,00"},
        {"-0,001", "0,00"},
        {" 12 ", "12,00"},
        {"12.5", "12,50"},
        {"1234.567", "1.234,57"},
        {",5", "0,50"},
        {"0,005", "0,01"},
        {"999999", "999.999,00"},
        {"123456789012345", "123.456.789.012.345,00"},
        {"1234.567,8", "1234.567,8"},
        {"1.23,4", "1.23,4"},
        {"1,2,3", "1,2,3"},
        {"doce", "doce"},
        {"--1", "--1"},
        {",", ","},
        {"", ""},
        {"1.234.56", "1.234.56"},
        {"nan", "nan"},
        {"1234567890123456", "1234567890123456"},
    };
    for (const auto& [typed, shown] : cases) EXPECT_EQ(leftUnder("##,###,##0.00", typed), shown) << typed;
    EXPECT_EQ(leftUnder("0000", "12"), "0012");
    EXPECT_EQ(leftUnder("0000", "-12"), "-0012");
}

TEST_F(Fields, DatesAreReadInEveryUsualForm) {
    const std::pair<const char*, const char*> cases[] = {
        {"1/2/26", "01/02/2026"},
        {"1/2/29", "01/02/2029"},
        {"1/2/30", "01/02/1930"},
        {"01-02-2026", "01/02/2026"},
        {"1.2.99", "01/02/1999"},
        {"01022026", "01/02/2026"},
        {"010226", "01/02/2026"},
        {"29/2/2024", "29/02/2024"},
        {"31/12/26", "31/12/2026"},
        {"29/2/2026", "29/2/2026"},
        {"31/4/26", "31/4/26"},
        {"1/13/26", "1/13/26"},
        {"1/2", "1/2"},
        {"1/2/026", "1/2/026"},
        {"/2/26", "/2/26"},
        {"hoy", "hoy"},
        {"2026-02-01", "01/02/2026"},
        {"", ""},
    };
    for (const auto& [typed, shown] : cases) EXPECT_EQ(leftUnder("dd/mm/yyyy", typed), shown) << typed;
}

TEST_F(Fields, NumericOnesTakeNoOtherKeys) {
    const auto passing = [this](bool marks) {
        std::string passed;
        for (int key = 1; key < 0x200; ++key) {
            int ascii = key;
            help.FiltrarTecla(field, ascii, marks, 0);
            EXPECT_TRUE(ascii == 0 || ascii == key);
            if (ascii >= ' ') passed += static_cast<char>(ascii);
            EXPECT_TRUE(key >= ' ' || ascii == key) << "control keys edit the field";
        }
        return passed;
    };
    EXPECT_EQ(passing(false), "0123456789");
    EXPECT_EQ(passing(true), ",-.0123456789");
}

}  // namespace
}  // namespace FendaMaestros::testing
