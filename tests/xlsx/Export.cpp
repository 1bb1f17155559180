#include <sys/resource.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <limits>

#include "platform/xlsx/CellText.h"
#include "platform/xlsx/Hoja.h"
#include "platform/xlsx/KOffice.h"
#include "tests/support/DesktopTest.h"
#include "tests/support/WithoutViewer.h"
#include "tests/xlsx/Archive.h"
#include "ui/FileName.h"

namespace FendaMaestros::testing {
namespace {

namespace fs = std::filesystem;

class Export : public DesktopTest {
protected:
    fs::path folder;
    std::string target;
    DataGrid grid;
    std::shared_ptr<Recordset> rows =
        std::make_shared<Recordset>(std::vector<std::string>{"Id", "Codigo", "Des", "Saldo"});

    Export() {
        registerKOffice(components, desktop);
        std::string made = (fs::temp_directory_path() / "fendaXXXXXX").string();
        if (!mkdtemp(made.data())) throw std::runtime_error("no folder");
        folder = made;
        target = folder / "Listado.xlsx";
        grid.Columns = {{{"Id", 1440, Alignment::Left, false}, 0, ""},
                        {{"Código »", 1500, Alignment::Center, true}, 1, ""},
                        {{"Descripción", 10000, Alignment::Left, true}, 2, ""},
                        {{"Saldo", 1800, Alignment::Right, true}, 3, "##,###,##0.00 "}};
    }
    ~Export() override { fs::remove_all(folder); }

    void addRow(std::int64_t id, std::string_view code, std::string_view description, double balance) {
        rows->appendInteger(id);
        rows->appendText(code);
        rows->appendText(description);
        rows->appendReal(balance);
    }

    void exportTo(const std::string& path, const std::string& title) {
        person.files = {path};
        const auto component = components.create<SpreadsheetExporter>();
        component->sTitulo = title;
        component->GridToExcel(rows, grid);
    }

    /// The sentence of the failure; nothing may be left behind in the folder but `kept`.
    std::string failureAt(const std::string& path, std::ptrdiff_t kept = 0) {
        std::string sentence;
        try {
            exportTo(path, "Título");
        } catch (const std::runtime_error& failure) {
            sentence = failure.what();
        }
        EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), kept);
        EXPECT_TRUE(desktop.openedFiles().empty());
        return sentence;
    }

    std::string sheet() const { return Archive(target)["xl/worksheets/sheet1.xml"]; }
};

void expectContains(const std::string& whole, std::initializer_list<const char*> parts) {
    for (const char* part : parts) EXPECT_NE(whole.find(part), std::string::npos) << part << "\nin " << whole;
}

TEST_F(Export, WritesTheVisibleColumnsUnderTitleAndCaptions) {
    addRow(7, "00043", "Caja & \"bancos\" <ñ> 😀", 1234.5);
    rows->moveToRow(5);
    const auto before = rows.get();
    exportTo(target, "Fenda. Listado de cuentas");
    EXPECT_EQ(rows.get(), before);
    EXPECT_EQ(rows->currentRow(), -1);
    EXPECT_EQ(desktop.openedFiles(), std::vector<std::string>{target});

    const std::string xml = sheet();
    expectContains(
        xml, {"<c r=\"A1\" s=\"1\" t=\"inlineStr\"><is><t>Fenda. Listado de cuentas</t></is></c></row>",
              "<t>Código »</t>", "<t>Descripción</t>", "<t>Saldo</t>", "t=\"inlineStr\"><is><t>00043</t>",
              "<t>Caja &amp; \"bancos\" &lt;ñ&gt; 😀</t>", "<v>1234.5</v>",
              "<pane ySplit=\"2\" topLeftCell=\"A3\" activePane=\"bottomLeft\" state=\"frozen\"/>", "paperSize=\"9\"",
              "orientation=\"landscape\"", "fitToHeight=\"0\"", "<pageSetUpPr fitToPage=\"1\"/>"});
    EXPECT_EQ(xml.find("<t>Id</t>"), std::string::npos);
    EXPECT_EQ(xml.find("r=\"D"), std::string::npos);
    const Archive archive(target);
    expectContains(archive["xl/styles.xml"],
                   {"formatCode=\"##,###,##0.00 \"", "horizontal=\"center\"", "horizontal=\"right\""});
    expectContains(archive["xl/workbook.xml"], {"name=\"_xlnm.Print_Titles\" localSheetId=\"0\">Listado!$1:$2<"});
    expectContains(archive["docProps/core.xml"], {"<dc:title>Fenda. Listado de cuentas</dc:title>"});
}

TEST_F(Export, TellsNumbersFromTextsAndTextsFromFormulas) {
    grid.Columns.resize(3);
    grid.Columns[2].NumberFormat = "00";
    addRow(1, "=1+1", "7", 0);
    rows->appendInteger(2);
    rows->appendInteger(12);
    rows->appendInteger(3);
    rows->appendNull();
    rows->appendInteger(3);
    rows->appendInteger(std::numeric_limits<std::int64_t>::max());
    rows->appendNull();
    rows->appendNull();
    exportTo(target, "");
    expectContains(sheet(), {"<row r=\"1\"", "ySplit=\"1\"", "<t>=1+1</t>", "<t>07</t>", "<t>12</t>", "<v>3</v>",
                             "<t>9223372036854775807</t>"});
    EXPECT_EQ(sheet().find("<f>"), std::string::npos);
    expectContains(Archive(target)["xl/styles.xml"], {"formatCode=\"00\""});
}

TEST_F(Export, CountsWithNumbersAndTurnsThePaperForWhatIsWide) {
    grid.Columns = {{{"Centrado", 5250, Alignment::Center, true}, 0, "00"},
                    {{"Texto", 5250, Alignment::Left, true}, 2, ""}};
    rows->appendInteger(5);
    rows->appendText("");
    rows->appendText("a\tb\nc");
    rows->appendNull();
    rows->appendInteger(-999'999'999'999'999);
    rows->appendNull();
    rows->appendInteger(-1'000'000'000'000'000);
    rows->appendNull();
    exportTo(target, "");
    expectContains(sheet(), {"<v>5</v>", "<t>a\tb\nc</t>", "<v>-999999999999999</v>", "<t>-1000000000000000</t>",
                             "customWidth=\"1\""});
    expectContains(Archive(target)["xl/styles.xml"], {"<b/>"});
    EXPECT_EQ(sheet().find("landscape"), std::string::npos) << "700 pixels just fit";
    const auto widths = [&] { return sheet().substr(sheet().find("<cols>"), 200); };
    const std::string before = widths();
    grid.Columns[1].Width += 15;
    exportTo(target, "");
    expectContains(sheet(), {"landscape"});
    EXPECT_NE(widths(), before);
}

TEST_F(Export, TellsWhereTheFileIsWhenNothingOpensIt) {
    WithoutViewer withoutViewer(person);
    registerKOffice(components, withoutViewer);
    person.answers = {Answer::Ok};
    exportTo(target, "Cuentas");
    EXPECT_EQ(person.messages.at(0).text, "Se ha guardado " + target);
    EXPECT_EQ(person.messages.at(0).title, "Cuentas");
}

TEST_F(Export, ProposesANameThatFileSystemsTake) {
    exportTo("", "");
    exportTo("", "Fenda. Altas/bajas: \"2026\"\n");
    EXPECT_EQ(person.proposals, (std::vector<std::string>{"Listado.xlsx", "Fenda. Altas bajas 2026.xlsx"}));
    EXPECT_TRUE(desktop.openedFiles().empty());
    EXPECT_EQ(fileNameFrom("../../..", "x"), "x");
    EXPECT_EQ(fileNameFrom("..a..", "x"), "a");
    std::string smiles;
    for (int i = 0; i < 300; ++i) smiles += "😀";
    EXPECT_EQ(fileNameFrom(smiles, "x").size(), 240U);
}

TEST_F(Export, HoldsHostileTexts) {
    std::string title;
    for (int i = 0; i < 300; ++i) title += "ñ";
    addRow(1, "_x0041_x0042_B", "_x41_ _X0041_", std::numeric_limits<double>::infinity());
    addRow(1,
           "a\x01\x1f"
           "b\nc",
           std::string(40000, 'x'), std::numeric_limits<double>::infinity());
    exportTo(target, title);
    const std::string xml = sheet();
    expectContains(xml, {"<t>_x005F_x0041_x005F_x0042_B</t>", "<t>_x41_ _X0041_</t>", "<t>a  b\nc</t>",
                         (">" + std::string(32767, 'x') + "<").c_str()});
    EXPECT_EQ(xml.find("<v>"), std::string::npos);

    const auto cell = [](std::string_view text) {
        std::string made;
        toCellText(text, made);
        return made;
    };
    EXPECT_EQ(cell("\xff\xc3(\xed\xa0\x80"), "\uFFFD\uFFFD(\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(cell("a\xef\xbf\xbf"), "a\uFFFD\uFFFD\uFFFD");
    EXPECT_EQ(cell(std::string(32766, 'x') + "😀"), std::string(32766, 'x'));
}

TEST_F(Export, FailsWholeAndSaysWhy) {
    addRow(1, "1", "Caja", 0);
    EXPECT_EQ(failureAt(folder / "no" / "hay.xlsx"),
              "No se puede guardar \"" + (folder / "no" / "hay.xlsx").string() + "\": la carpeta no existe.");
    EXPECT_NE(failureAt(folder).find("ya hay una carpeta con ese nombre"), std::string::npos);
    EXPECT_NE(failureAt(folder / std::string(300, 'a')).find("el nombre es demasiado largo"), std::string::npos);
    grid.Columns[2].SourceColumn = 4;
    EXPECT_EQ(failureAt(target), "La columna Descripción no está entre los datos que se exportan.");
}

TEST_F(Export, AFullDiskLeavesTheFileThatWasThere) {
    for (int row = 0; row < 20000; ++row) addRow(row, "1", "Descripción de la cuenta", row);
    std::ofstream(target) << "antes";
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{1 << 20, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limit);
    const std::string failure = failureAt(target, 1);
    setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(failure, "No se puede guardar la hoja de cálculo: no queda sitio en el disco.");
    std::string kept;
    std::ifstream(target) >> kept;
    EXPECT_EQ(kept, "antes");
}

TEST_F(Export, RefusesMoreRowsThanASheetTakes) {
    auto one = std::make_shared<Recordset>(std::vector<std::string>{"Id"});
    for (int row = 0; row < 1048575; ++row) one->appendInteger(row);
    EXPECT_NO_THROW(checkFits(*one, ""));
    EXPECT_THROW(checkFits(*one, "Título"), std::runtime_error);
    rows = one;
    EXPECT_EQ(failureAt(target),
              "El listado tiene 1048575 filas y en una hoja de cálculo caben 1048574. Acote el "
              "listado y vuelva a exportarlo.");
    EXPECT_EQ(person.files.size(), 1U) << "asked for a file first";
    person.files.clear();
}

}  // namespace
}  // namespace FendaMaestros::testing
