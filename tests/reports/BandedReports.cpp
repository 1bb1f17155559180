#include "tests/reports/Support.h"
#include "tests/support/DesktopTest.h"
#include "tests/support/WithoutViewer.h"
#include "ui/BandedReport.h"

namespace FendaMaestros::testing {
namespace {

/// Rows of 1000 twips on a page with room for 10 of them, less what heads and feet take.
class TestReport final : public BandedReport {
public:
    explicit TestReport(int rows) : BandedReport("Prueba", "Listado de prueba") {
        layout_.pageHeight = 10000;
        layout_.pageWidth = 6000;
        layout_.margin = 0;
        layout_.band(BandKind::Detail).Height = 1000;
        layout_.band(BandKind::Detail).Fields = {{"Texto", "numero", {0, 0, 4000, 900}, {}, ""}};
        DataSource = std::make_shared<Recordset>(std::vector<std::string>{"Numero"});
        for (int row = 0; row < rows; ++row) DataSource->appendInteger(row);
    }
    ReportBand& band(BandKind kind) { return layout_.band(kind); }
    void addMark(BandKind kind, const char* caption, Twips height) {
        band(kind).Height = height;
        band(kind).Labels.push_back({"Marca", caption, {0, 0, 6000, 200}, {}});
    }
    std::shared_ptr<const PagedDocument> pages() const { return document({2026, 11, 22}); }
};

TEST(BandedReport, CountsPagesAroundTheLastRowThatFits) {
    for (const auto& [rows, pages] :
         std::vector<std::pair<int, int>>{{0, 1}, {1, 1}, {10, 1}, {11, 2}, {20, 2}, {21, 3}})
        EXPECT_EQ(TestReport(rows).pages()->pageCount(), pages) << rows << " rows";
}

TEST(BandedReport, HeadsTakeTheirRoomAndTheReportFooterNeedsAPlaceOfItsOwn) {
    for (const auto& [rows, pages] :
         std::vector<std::pair<int, int>>{{0, 1}, {4, 1}, {5, 2}, {6, 2}, {12, 2}, {13, 3}}) {
        TestReport report(rows);
        report.addMark(BandKind::ReportHeader, "comienzo", 2500);
        report.addMark(BandKind::PageHeader, "cabecera", 1500);
        report.addMark(BandKind::PageFooter, "pie", 500);
        report.addMark(BandKind::ReportFooter, "final", 1000);
        const auto document = report.pages();
        EXPECT_EQ(document->pageCount(), pages) << rows << " rows";
        const int last = document->pageCount() - 1;
        EXPECT_TRUE(shows(*document, 0, "comienzo"));
        EXPECT_TRUE(shows(*document, last, "final"));
        EXPECT_EQ(shows(*document, 0, "final"), last == 0);
        EXPECT_EQ(shows(*document, last, "comienzo"), last == 0);
        for (int page = 0; page <= last; ++page) {
            EXPECT_TRUE(shows(*document, page, "cabecera") && shows(*document, page, "pie"));
            for (const PageText& text : document->page(page).texts)
                EXPECT_LE(text.top, text.text == "pie" ? 9500 : 8500);
        }
    }
}

TEST(BandedReport, PrintsEveryRowOnceInOrderAndLeavesTheRecordsetWhereItWas) {
    TestReport report(50000);
    report.DataSource->moveToRow(7);
    int moves = 0;
    report.DataSource->MoveComplete = [&] { ++moves; };
    const auto document = report.pages();
    int expected = 0;
    for (int page = 0; page < document->pageCount(); ++page)
        for (const PageText& text : document->page(page).texts) ASSERT_EQ(text.text, std::to_string(expected++));
    EXPECT_EQ(expected, 50000);
    EXPECT_EQ(report.DataSource->currentRow(), 7);
    EXPECT_EQ(moves, 0);
}

TEST(BandedReport, ReplacesMarksButNotThoseInSomebodysName) {
    TestReport report(11);
    report.addMark(BandKind::PageHeader, "Pág. %p de %P, %d 50% %", 0);
    report.addMark(BandKind::PageHeader, "100%pura", 0);
    report.band(BandKind::PageHeader).Label("marca").Name = "Otra";
    report.Section("cabecera").Label("Marca").Literal = true;
    const auto document = report.pages();
    EXPECT_TRUE(shows(*document, 1, "Pág. 2 de 2, 22/11/2026 50% %"));
    EXPECT_TRUE(shows(*document, 1, "100%pura"));
}

TEST(BandedReport, SetsLongAndBrokenTextsInOneBoundedLine) {
    TestReport report(0);
    report.band(BandKind::Detail).Fields[0].Mask = "#,##0.00";
    report.DataSource =
        recordset({"numero"}, {{std::string(10000, 'i')}, {"a\nb\x01\u2028c\u2029d\u0085e"}, {Variant()}, {1234.5}});
    const auto texts = report.pages()->page(0).texts;
    EXPECT_LT(texts[0].text.size(), 120U);
    EXPECT_GT(texts[0].text.size(), 80U);
    EXPECT_EQ(texts[1].text, "a b  c d e");
    EXPECT_EQ(texts[2].text, "");
    EXPECT_EQ(texts[3].text, "1.234,50");
}

TEST(BandedReport, NamesWhatIsMissing) {
    const auto failure = [](const TestReport& report) -> std::string {
        try {
            report.pages();
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "";
    };
    TestReport report(1);
    report.DataSource = recordset({"Otra"}, {{1}});
    EXPECT_EQ(failure(report), "El campo numero del informe Prueba no está entre los datos que se listan.");
    report.DataSource = nullptr;
    EXPECT_EQ(failure(report), "El campo numero del informe Prueba no está entre los datos que se listan.");
    EXPECT_THROW(report.Section("Pie"), std::out_of_range);
    EXPECT_THROW(report.Section("Lineas").Label("Etiqueta99"), std::out_of_range);
}

// --- the preview

class Preview : public DesktopTest {
protected:
    Preview()
        : DesktopTest([this](const PagedDocument& document, const std::string& path) {
              if (path == "lleno.pdf") throw std::runtime_error("No queda sitio en el disco.");
              writtenTo = path + " de " + std::to_string(document.pageCount());
          }) {}

    void show(int rows, ScriptedPerson::Visit visit) {
        onNextScreen(std::move(visit));
        TestReport(rows).Show(desktop);
    }
    static std::string where(Form& form) {
        std::string state = ScriptedPerson::control<Label>(form, "lblPagina").Caption;
        for (const char* name : {"cmdPrimera", "cmdAnterior", "cmdSiguiente", "cmdUltima"})
            state += ScriptedPerson::control(form, name).Enabled ? "+" : "-";
        return state;
    }

    std::string writtenTo;
};

TEST_F(Preview, TurnsPagesByKeysAndCommandsAndStopsAtBothEnds) {
    show(25, [&](Form& form) {
        EXPECT_EQ(form.Caption, "Listado de prueba");
        EXPECT_EQ(where(form), "Página 1 de 3--++");
        const auto key = [&](int code) {
            person.hands.key(form, {code, shift::None});
            return where(form);
        };
        EXPECT_EQ(key(key::PageUp), "Página 1 de 3--++");
        EXPECT_EQ(key(key::PageDown), "Página 2 de 3++++");
        EXPECT_EQ(key(key::End), "Página 3 de 3++--");
        EXPECT_EQ(key(key::PageDown), "Página 3 de 3++--");
        EXPECT_EQ(key(key::Home), "Página 1 de 3--++");
        person.hands.key(form, {'L', shift::Alt});
        EXPECT_EQ(where(form), "Página 3 de 3++--");
        person.press(form, "cmdAnterior");
        person.press(form, "cmdSiguiente");
        person.press(form, "cmdPrimera");
        EXPECT_EQ(where(form), "Página 1 de 3--++");
        person.escape(form);
        EXPECT_FALSE(form.isOpen());
    });
}

TEST_F(Preview, EnterMovesOnWithoutPressingAnything) {
    show(25, [&](Form& form) {
        EXPECT_EQ(form.activeControl()->Name, "Pagina");
        person.enter(form);
        EXPECT_EQ(form.activeControl()->Name, "cmdSiguiente");
        person.enter(form);
        EXPECT_EQ(where(form), "Página 1 de 3--++");
    });
}

TEST_F(Preview, ZoomsWithinItsSteps) {
    show(1, [&](Form& form) {
        const auto& page = ScriptedPerson::control<PageView>(form, "Pagina");
        EXPECT_EQ(page.Zoom, 0);
        const auto pressed = [&](const char* button) {
            std::string zooms;
            for (int i = 0; i < 7; ++i) {
                person.press(form, button);
                zooms += std::to_string(page.Zoom) + (ScriptedPerson::control(form, button).Enabled ? " " : "- ");
            }
            return zooms;
        };
        EXPECT_EQ(pressed("cmdAmpliar"), "125 150 200 300- 300- 300- 300- ");
        EXPECT_EQ(pressed("cmdReducir"), "200 150 125 100 75 50- 50- ");
        EXPECT_EQ(pressed("cmdAjustar"), "0 0 0 0 0 0 0 ");
        EXPECT_EQ(pressed("cmdReducir"), "75 50- 50- 50- 50- 50- 50- ");
        EXPECT_EQ(where(form), "Página 1 de 1----");
    });
}

TEST_F(Preview, SavesAndOpensAPdfAndSurvivesAFullDisk) {
    show(11, [&](Form& form) {
        person.files = {"lleno.pdf", "bien.pdf"};
        person.answers = {Answer::Ok};
        person.hands.key(form, {'D', shift::Alt});
        ASSERT_EQ(person.messages.size(), 1U);
        EXPECT_EQ(person.messages[0].text, "No queda sitio en el disco.");
        EXPECT_EQ(person.proposals.at(0), "Listado de prueba.pdf");
        EXPECT_EQ(form.activeControl()->Name, "cmdPdf");
        EXPECT_TRUE(form.isOpen() && form.Enabled);
        person.press(form, "cmdPdf");
        EXPECT_EQ(writtenTo, "bien.pdf de 2");
        EXPECT_EQ(desktop.openedFiles(), std::vector<std::string>{"bien.pdf"});
        person.answers = {Answer::Ok};
        person.press(form, "cmdImprimir");
        EXPECT_EQ(person.messages.back().text, "No hay ninguna impresora.");
        EXPECT_EQ(person.messages.back().title, "Listado de prueba");
        person.press(form, "cmdSalir");
        EXPECT_FALSE(form.isOpen());
    });
}

TEST_F(Preview, TellsWhereThePdfIsWhenNothingOpensIt) {
    WithoutViewer withoutViewer(person);
    onNextScreen([&](Form& form) {
        person.files = {"aqui.pdf"};
        person.answers = {Answer::Ok};
        person.press(form, "cmdPdf");
        EXPECT_EQ(person.messages.at(0).text, "Se ha guardado aqui.pdf");
        EXPECT_EQ(person.messages.at(0).style, message::Information);
        form.unload();
    });
    TestReport(1).Show(withoutViewer);
}

}  // namespace
}  // namespace FendaMaestros::testing
