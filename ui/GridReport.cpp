#include "ui/GridReport.h"

#include <utility>

#include "ui/ListingHeading.h"

namespace FendaMaestros {

namespace {

constexpr Twips headingTop = 1300;
constexpr Twips rowHeight = 260;
constexpr Twips gap = 80;
constexpr int points = 8;

}  // namespace

GridReport::GridReport(const std::string& title, const std::string& selection, std::shared_ptr<Recordset> rows,
                       std::span<const ListingColumn> columns)
    : BandedReport("GridReport", title) {
    std::swap(layout_.pageWidth, layout_.pageHeight);
    const Twips printWidth = layout_.pageWidth - 2 * layout_.margin;
    ReportBand& top = layout_.band(BandKind::PageHeader);
    addListingHeading(top, printWidth, {.company = {"Empresa", companyName()}, .title = {"Titulo", title}});
    top.Labels.push_back({"Acotacion",
                          selection,
                          {0, ListingHeading::titleEnd, printWidth, 280},
                          {"Arial", 9, false, Alignment::Left},
                          true});
    top.Lines = {{0, headingTop - 80, printWidth}, {0, headingTop + rowHeight + 40, printWidth}};
    top.Height = headingTop + rowHeight + 140;
    layout_.band(BandKind::Detail).Height = rowHeight;

    long long wanted = 0;
    for (const ListingColumn& column : columns) wanted += column.width;
    long long before = 0;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].width == 0) continue;
        const auto left = static_cast<Twips>(before * printWidth / wanted);
        before += columns[i].width;
        const auto end = static_cast<Twips>(before * printWidth / wanted);
        addColumn(rows->columnName(static_cast<int>(i)), columns[i], left, end - left - gap);
    }
    DataSource = std::move(rows);
}

void GridReport::addColumn(const std::string& field, const ListingColumn& column, Twips left, Twips width) {
    const Typeface heading{"Arial", points, true, column.alignment};
    const Typeface row{"Arial", points, false, column.alignment};
    layout_.band(BandKind::PageHeader)
        .Labels.push_back({field, column.caption, {left, headingTop, width, rowHeight}, heading, true});
    layout_.band(BandKind::Detail)
        .Fields.push_back({field, field, {left, 0, width, rowHeight}, row, column.numberFormat});
}

}  // namespace FendaMaestros
