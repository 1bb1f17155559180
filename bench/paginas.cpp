// A listing of 10,000 and of 100,000 rows as a PDF file: processor time, and how much memory the writing takes beyond
// that of the rows, which must not grow with the pages.

#include <sys/resource.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include "bench/Measure.h"
#include "component/FendaMaes.h"
#include "platform/qt/QtDesktop.h"
#include "platform/sqlite/DataFolder.h"
#include "ui/GridReport.h"

namespace {

using namespace FendaMaestros;
using namespace FendaMaestros::bench;

constexpr std::array<int, 2> sizes{10'000, 100'000};

/// The most memory that this process has held so far, in MiB.
long peakMemory() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

std::shared_ptr<Recordset> rows(int count) {
    auto made = std::make_shared<Recordset>(std::vector<std::string>{"PCta_Id", "Pcta_Cta", "Pcta_Des", "Saldo"});
    for (int n = 0; n < count; ++n) {
        made->appendInteger(n);
        made->appendText(std::to_string(43'000'000 + n));
        made->appendText("Construcciones número " + std::to_string(n));
        made->appendReal(n / 100.0);
    }
    return made;
}

}  // namespace

int main() {
    const auto folder = std::filesystem::temp_directory_path() / "fenda-bench-paginas";
    std::filesystem::remove_all(folder);
    const sqlite::DataFolder data(folder);
    data.create({.name = "Medida", .fiscalYear = 2026, .accountDigits = 8});
    const auto session = data.openCompany("Medida");
    QtDesktop desktop;
    ComponentRegistry components;
    FendaMaes maes(desktop, components);
    maes.MyBd = session.get();

    const std::array<ListingColumn, 4> columns{
        {{}, {"Cuenta", 1500}, {"Descripción", 9000}, {"Saldo", 1800, Alignment::Right, "##,###,##0.00 "}}};
    for (const int count : sizes) {
        const auto listed = rows(count);
        const long before = peakMemory();
        const Watch watch;
        const GridReport report("Listado de medida", "", listed, columns);
        desktop.writePdf(*report.document(desktop.today()), (folder / "listado.pdf").string());
        const Spent spent = watch.spent();
        std::printf("PDF de %6d filas: %.0f ms de procesador (objetivo con 10.000: 2000), %ld MiB más que antes\n",
                    count, spent.processor, peakMemory() - before);
    }
    std::filesystem::remove_all(folder);
}
