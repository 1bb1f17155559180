#include "ui/ListingHeading.h"

#include "ui/WorkContext.h"

namespace FendaMaestros {

namespace {

constexpr Twips asideWidth = 2600;
constexpr Twips gap = 200;

}  // namespace

void addListingHeading(ReportBand& band, Twips printWidth, ListingHeading heading) {
    const Twips asideLeft = printWidth - asideWidth;
    const auto add = [&band](ListingHeading::Line& line, const Placement& place, const Typeface& face, bool literal) {
        band.Labels.push_back({std::move(line.name), std::move(line.caption), place, face, literal});
    };
    const Typeface aside{"Arial", 9, false, Alignment::Right};
    add(heading.company, {0, 0, asideLeft - gap, 440}, {"Times New Roman", 16, true, Alignment::Left}, true);
    band.Labels.back().Whole = true;
    add(heading.title, {0, 500, asideLeft - gap, 340}, {"Arial", 12, false, Alignment::Left}, true);
    add(heading.page, {asideLeft, 120, asideWidth, 280}, aside, false);
    add(heading.date, {asideLeft, 540, asideWidth, 280}, aside, false);
}

std::string companyName() { return instanciaActual().sesion().Parametros().Item("Par_Nombre").Value.text(); }

}  // namespace FendaMaestros
