#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>

#include "app/CommandNif.h"

using namespace std::literals;

namespace FendaMaestros {

namespace {

struct Checked {
    std::string written;
    bool allValid = false;
};

/// Feeds a text in pieces of a given size, as a pipe or a terminal would.
Checked check(std::string_view input, std::size_t piece, NifOutput output = NifOutput::Verdict) {
    Checked checked;
    const ByteSource read = [&](char* buffer, std::size_t size) {
        const std::size_t count = std::min({piece, size, input.size()});
        std::memcpy(buffer, input.data(), count);
        input.remove_prefix(count);
        return count;
    };
    checked.allValid = checkIdentifiers(
        read, [&](std::string_view bytes) { checked.written += bytes; }, output);
    return checked;
}

TEST(NifStream, EachLineHasItsVerdictHoweverItArrives) {
    const std::string_view input = "12.345.678-z\r\nA12345675\n\n12\00034567L\n  ESA12345674"sv;
    for (const std::size_t piece : {1u, 7u, 65'536u}) {
        const Checked checked = check(input, piece);
        EXPECT_EQ(checked.written,
                  "12345678Z\tválido\nA12345675\tno válido\n\tno válido\n1234567L\tválido\nA12345674\tválido\n");
        EXPECT_FALSE(checked.allValid);
    }
}

TEST(NifStream, EachLineIsExplainedInColumnsOrAsJson) {
    const std::string_view input = "b-33778813\nFR12345678901\n[\\1\n";
    const Checked columns = check(input, 7, NifOutput::Explanation);
    EXPECT_EQ(columns.written,
              "B33778813\tno válido\thoy no válido\tCIF de una sociedad de responsabilidad limitada\t"
              "el dígito de control debería ser 2\tReal Decreto 1065/2007, artículo 22; Orden EHA/451/2008\n"
              "FR12345678901\tválido\thoy válido\tnúmero intracomunitario de Francia\t\t"
              "Directiva 2006/112/CE, artículos 214 y 215; formas publicadas en VIES\n"
              "[\\1\tno válido\thoy no válido\t\tno es un NIF, un NIE ni un número intracomunitario\t\n");
    EXPECT_FALSE(columns.allValid);
    const Checked json = check(input, 65'536, NifOutput::Json);
    EXPECT_EQ(json.written, R"({"identificador":"B33778813","valido":false,"valido_hoy":false,)"
                            R"("clase":"CIF de una sociedad de responsabilidad limitada","control":"2",)"
                            R"("motivo":"el dígito de control debería ser 2",)"
                            R"("norma":"Real Decreto 1065/2007, artículo 22; Orden EHA/451/2008"})"
                            "\n"
                            R"({"identificador":"FR12345678901","valido":true,"valido_hoy":true,)"
                            R"("clase":"número intracomunitario de Francia","control":null,"motivo":null,)"
                            R"("norma":"Directiva 2006/112/CE, artículos 214 y 215; formas publicadas en VIES"})"
                            "\n"
                            R"({"identificador":"[\\1","valido":false,"valido_hoy":false,"clase":null,"control":null,)"
                            R"("motivo":"no es un NIF, un NIE ni un número intracomunitario","norma":null})"
                            "\n");
}

TEST(NifStream, NothingToCheckIsNothingWrong) {
    EXPECT_TRUE(check("", 10).allValid);
    EXPECT_EQ(check("", 10).written, "");
    EXPECT_EQ(check("\n", 10).written, "\tno válido\n");
}

TEST(NifStream, AnIdentifierIsNotTooLongForItsSigns) {
    const std::string input = "ES" + std::string(300'000, ' ') + "A1234" + std::string(300'000, '-') + "5674\n";
    EXPECT_EQ(check(input, 1'000).written, "A12345674\tválido\n");
}

TEST(NifStream, OfATooLongLineOnlyTheBeginningIsShown) {
    const std::string input = "NL" + std::string(3 * longestIdentifier, '7') + "\n12345678Z\n";
    const Checked checked = check(input, 65'536);
    EXPECT_EQ(checked.written, "NL" + std::string(38, '7') + "…\tno válido\n12345678Z\tválido\n");
}

TEST(NifStream, VerdictsAreWrittenBeforeMoreIsAskedFor) {
    std::string written;
    std::vector<std::string> seenAtRead;
    const std::vector<std::string> typed{"12345678Z\n", "1234567L\n", ""};
    const ByteSource terminal = [&](char* buffer, std::size_t) {
        const std::string& line = typed[seenAtRead.size()];
        seenAtRead.push_back(written);
        return line.copy(buffer, line.size());
    };
    EXPECT_TRUE(checkIdentifiers(terminal, [&](std::string_view bytes) { written += bytes; }));
    EXPECT_EQ(seenAtRead,
              (std::vector<std::string>{"", "12345678Z\tválido\n", "12345678Z\tválido\n1234567L\tválido\n"}));
}

}  // namespace

}  // namespace FendaMaestros
