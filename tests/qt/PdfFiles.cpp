#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QImage>
#include <QPainter>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/qt/PagePainter.h"
#include "platform/qt/Pdf.h"
#include "toolkit/Document.h"
#include "ui/ListingHeading.h"

namespace FendaMaestros {
namespace {

class TwoPages final : public PagedDocument {
public:
    std::string title() const override { return "Listado"; }
    Twips pageWidth() const override { return 11906; }
    Twips pageHeight() const override { return 16838; }
    int pageCount() const override { return 2; }
    Page page(int index) const override {
        const PageText text{1000, 1000, 4000, 300, "Código ñ €, página " + std::to_string(index + 1), "Arial", 10};
        return {{text}, {{1000, 1400, 9000}}};
    }
};

TEST(Pdf, text_stays_text_on_pages_of_the_documents_size) {
    const auto path = std::filesystem::temp_directory_path() / "fenda_paginas.pdf";
    writePdf(TwoPages(), path.string());
    const auto copy = path.string() + ".txt";
    if (std::system("command -v pdftotext >/dev/null") != 0) GTEST_SKIP() << "no pdftotext";
    ASSERT_EQ(std::system(("pdftotext -layout " + path.string() + " " + copy).c_str()), 0);
    std::ifstream file(copy);
    const std::string text((std::istreambuf_iterator<char>(file)), {});
    EXPECT_NE(text.find("Código ñ €, página 1"), std::string::npos);
    EXPECT_NE(text.find("Código ñ €, página 2"), std::string::npos);
    std::filesystem::remove(path);
    std::filesystem::remove(copy);
}

/// The name of a company on the heading of a listing, as ink in its place and a pixel around it.
QImage companyInk(const std::string& name) {
    constexpr int twipsPerPixel = 10;
    class Headed final : public BandedReport {
    public:
        explicit Headed(const std::string& company) : BandedReport("Prueba", "Prueba") {
            layout_.margin = 2 * twipsPerPixel;
            ReportBand& top = layout_.band(BandKind::PageHeader);
            top.Height = 1000;
            addListingHeading(top, 10000, {.company = {"Empresa", company}});
            DataSource = std::make_shared<Recordset>(std::vector<std::string>{"Nada"});
        }
    };
    const Page page = Headed(name).document({2026, 11, 23})->page(0);
    const PageText& text = page.texts.front();
    QImage ink((text.width + 2 * text.left) / twipsPerPixel, (text.height + 2 * text.top) / twipsPerPixel,
               QImage::Format_Grayscale8);
    ink.fill(Qt::white);
    QPainter painter(&ink);
    painter.scale(1.0 / twipsPerPixel, 1.0 / twipsPerPixel);
    qt::paintPage(painter, {{text}, {}});
    return ink;
}

/// Whether a line of pixels inside of the edge of its place has ink: then something may be cut off.
bool touchesEdge(const QImage& ink) {
    const int right = ink.width() - 3, bottom = ink.height() - 3;
    for (int y = 0; y < ink.height(); ++y)
        if (ink.pixelColor(right, y) != Qt::white) return true;
    for (int x = 0; x < ink.width(); ++x)
        if (ink.pixelColor(x, bottom) != Qt::white) return true;
    return false;
}

TEST(PrintedPages, show_the_whole_name_of_a_company_however_long) {
    for (const int words : {1, 7, 14, 40}) {
        std::string name;
        for (int word = 0; word < words; ++word) name += "MAQUINARIA ";
        const QImage one = companyInk(name + "S.L.A"), other = companyInk(name + "S.L.V");
        EXPECT_NE(one, other) << words << " words: the last letter is not on the page";
        EXPECT_FALSE(touchesEdge(one)) << words;
    }
    EXPECT_NE(companyInk("MAQUINARIA"), companyInk("MAQUINARI")) << "there is ink at all";
}

/// Files of this process cannot grow beyond some bytes, as on a disk that is full.
class FullDisk {
public:
    explicit FullDisk(rlim_t bytes) {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &before_); }

private:
    rlimit before_{};
};

std::string failureAt(const std::string& path) {
    try {
        writePdf(TwoPages(), path);
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
    return {};
}

TEST(Pdf, a_file_that_cannot_be_written_is_an_error_and_leaves_the_old_one) {
    EXPECT_EQ(failureAt("/no/existe/paginas.pdf"),
              "No se puede escribir el fichero /no/existe/paginas.pdf: la carpeta no existe.");
    EXPECT_THROW(writePdf(TwoPages(), std::filesystem::temp_directory_path().string()), std::runtime_error);

    const auto path = std::filesystem::temp_directory_path() / "fenda_lleno.pdf";
    std::ofstream(path) << "antes";
    {
        const FullDisk full(1000);
        EXPECT_EQ(failureAt(path.string()),
                  "No se puede escribir el fichero " + path.string() + ": no queda sitio en el disco.");
    }
    std::string left;
    std::ifstream(path) >> left;
    EXPECT_EQ(left, "antes");
    std::filesystem::remove(path);
}

}  // namespace
}  // namespace FendaMaestros
