#include <gtest/gtest.h>
#include <sys/resource.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/qt/Pdf.h"
#include "toolkit/Document.h"

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
