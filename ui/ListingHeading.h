#pragma once

#include <string>

#include "ui/BandedReport.h"

namespace FendaMaestros {

/// What heads every page of a printed listing: company and title at the left, number of the page and date at the right.
struct ListingHeading {
    /// Where the heading ends; what a listing says besides, such as its selection, goes below.
    static constexpr Twips titleEnd = 840;

    struct Line {
        std::string name;
        std::string caption = {};
    };

    Line company{"Empresa"};
    Line title{"Titulo"};
    Line page{"Pagina", "Página %p de %P"};
    Line date{"Fecha", "Fecha %d"};
};

/// Adds the heading to a band that is as wide as the printed part of the page. Names and captions are the heading's,
/// places and typefaces those of all listings. Company and title are printed as they are, the company whole.
void addListingHeading(ReportBand& band, Twips printWidth, ListingHeading heading);

/// The name of the company of InstanciaActual's session. Throws ErrorBd when it has none.
std::string companyName();

}  // namespace FendaMaestros
