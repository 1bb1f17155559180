#include "platform/reports/PlanCuentas.h"

#include <algorithm>
#include <cmath>

#include "toolkit/Format.h"
#include "ui/ListingHeading.h"

namespace FendaMaestros {

namespace {

constexpr Twips gap = 100;
constexpr Twips rowHeight = 280;
constexpr Twips headingTop = 1300;
constexpr Twips balanceWidth = 1700;
constexpr const char* balanceMask = "##,###,##0.00 ";

const std::vector<ReportDesign> designs{
    {"PlanCuentas1",
     "Plan de cuentas",
     false,
     true,
     10,
     {{"Cuenta", "Pcta_Cta", 1500}, {"Descripción", "Pcta_Des", 0}}},
    {"PlanCuentasDpto",
     "Plan de cuentas por departamentos",
     false,
     true,
     10,
     {{"Departamento", "Departamento", 2600}, {"Cuenta", "Pcta_Cta", 1400}, {"Descripción", "Pcta_Des", 0}}},
    {"PlanCuentasCentro",
     "Plan de cuentas por centros",
     false,
     true,
     10,
     {{"Centro", "Departamento", 2600}, {"Cuenta", "Pcta_Cta", 1400}, {"Descripción", "Pcta_Des", 0}}},
    {"PlanCuentasNif",
     "Plan de cuentas con NIF",
     true,
     false,
     8,
     {{"Cuenta", "Pcta_Cta", 1150},
      {"Descripción", "Pcta_Des", 0},
      {"NIF", "Nif", 1100},
      {"Razón social / Nombre", "RSocial", 2500},
      {"Dirección", "Direcion", 2600},
      {"C. postal", "CPostal", 750},
      {"Población", "Poblacion", 1500},
      {"Provincia", "Provincia", 1200},
      {"País", "Pais", 1000}}},
};

/// Exact to 1/10000, whatever the number of rows.
double total(const Recordset& rows, int column) {
    long long units = 0;
    for (int row = 0; row < rows.rowCount(); ++row) units += std::llround(rows.cell(row, column).real() * 10000);
    return static_cast<double>(units) / 10000;
}

}  // namespace

const ReportDesign* findDesign(std::string_view name) {
    const auto found = std::ranges::find(designs, name, &ReportDesign::name);
    return found == designs.end() ? nullptr : &*found;
}

PlanCuentas::PlanCuentas(const ReportDesign& design, const ReportHeading& heading, bool balances,
                         std::shared_ptr<Recordset> rows)
    : BandedReport(design.name, design.title) {
    if (design.landscape) std::swap(layout_.pageWidth, layout_.pageHeight);
    printWidth_ = layout_.pageWidth - 2 * layout_.margin;
    buildHeading(design, heading);

    const bool withBalance = balances && design.hasBalance;
    Twips taken = withBalance ? balanceWidth : -gap;
    for (const ReportColumn& column : design.columns) taken += column.width + gap;
    Twips left = 0;
    for (ReportColumn column : design.columns) {
        if (column.width == 0) column.width = printWidth_ - taken;
        addColumn(column, left, design.points);
        left += column.width + gap;
    }
    if (withBalance) addBalance(*rows, design.points);
    layout_.band(BandKind::Detail).Height = rowHeight;
    DataSource = std::move(rows);
}

void PlanCuentas::buildHeading(const ReportDesign& design, const ReportHeading& heading) {
    ReportBand& top = layout_.band(BandKind::PageHeader);
    addListingHeading(top, printWidth_, {.company = {"Empresa", heading.company}, .title = {"Titulo", design.title}});
    top.Labels.push_back({"Acotacion",
                          heading.selection,
                          {0, ListingHeading::titleEnd, printWidth_, 280},
                          {"Arial", 9, false, Alignment::Left},
                          true});
    top.Lines = {{0, headingTop - 80, printWidth_}, {0, headingTop + rowHeight + 40, printWidth_}};
    top.Height = headingTop + rowHeight + 140;
}

void PlanCuentas::addColumn(const ReportColumn& column, Twips left, int points) {
    const Typeface heading{"Arial", points, true, Alignment::Left};
    const Typeface row{"Arial", points, false, Alignment::Left};
    layout_.band(BandKind::PageHeader)
        .Labels.push_back({column.field, column.heading, {left, headingTop, column.width, rowHeight}, heading, true});
    layout_.band(BandKind::Detail)
        .Fields.push_back({column.field, column.field, {left, 0, column.width, rowHeight}, row, ""});
}

void PlanCuentas::addBalance(const Recordset& rows, int points) {
    const Twips left = printWidth_ - balanceWidth;
    const Typeface bold{"Arial", points, true, Alignment::Right};
    const Typeface plain{"Arial", points, false, Alignment::Right};
    layout_.band(BandKind::PageHeader)
        .Labels.push_back({"Saldo", "Saldo ", {left, headingTop, balanceWidth, rowHeight}, bold, true});
    layout_.band(BandKind::Detail)
        .Fields.push_back({"Saldo", "Saldo", {left, 0, balanceWidth, rowHeight}, plain, balanceMask});

    const int column = rows.columnIndex("Saldo");
    if (column < 0) return;  // reported with the other fields when the report is shown
    ReportBand& end = layout_.band(BandKind::ReportFooter);
    end.Height = rowHeight + 120;
    end.Lines = {{left, 40, balanceWidth}};
    end.Labels = {
        {"EtiquetaTotal", "Total", {left - gap - balanceWidth, 100, balanceWidth, rowHeight}, bold, true},
        {"Total", format(total(rows, column), balanceMask), {left, 100, balanceWidth, rowHeight}, bold, true},
    };
}

}  // namespace FendaMaestros
