#pragma once

#include <array>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "session/Recordset.h"
#include "toolkit/Desktop.h"
#include "toolkit/Document.h"

namespace FendaMaestros {

/// How the texts of a label or field are set.
struct Typeface {
    std::string family = "Arial";
    int points = 10;
    bool bold = false;
    Alignment alignment = Alignment::Left;
};

/// In twips from the top left corner of the band.
struct Placement {
    Twips left = 0, top = 0, width = 0, height = 0;
};

/// A fixed text of a band. "%p" stands for the number of the page, "%P" for the number of pages and "%d" for the date
/// of printing, unless it is literal.
struct ReportLabel {
    std::string Name;
    std::string Caption;
    Placement place;
    Typeface face;
    /// The caption is somebody's data, such as a company name: printed exactly as it is.
    bool Literal = false;
    /// Wrapped, and set smaller, until all of it is within its place, instead of cut.
    bool Whole = false;
};

/// Shows a column of the current row; only those of the detail band print.
struct ReportField {
    std::string Name;
    /// The column of the record set, without regard to case.
    std::string DataField;
    Placement place;
    Typeface face;
    /// A mask of toolkit/Format.h.
    std::string Mask;
};

/// A strip of fixed height over the width of the page. One of height 0 takes no room.
class ReportBand {
public:
    std::string Name;
    Twips Height = 0;
    std::vector<ReportLabel> Labels;
    std::vector<ReportField> Fields;
    /// Rules across the page.
    std::vector<PageLine> Lines;

    /// By name, without regard to case. Throws std::out_of_range, in Spanish.
    ReportLabel& Label(std::string_view name);
    ReportField& Field(std::string_view name);
};

/// Bands in the order in which they are printed.
enum class BandKind { ReportHeader, PageHeader, Detail, PageFooter, ReportFooter };

/// Everything that a page needs but the rows.
struct ReportLayout {
    static constexpr Twips A4Width = 11906, A4Height = 16838;

    /// Named Sección4, Cabecera, Lineas, Sección3 and Factura_Resumen.
    std::array<ReportBand, 5> bands;
    Twips pageWidth = A4Width, pageHeight = A4Height;
    /// Kept free on all four sides.
    Twips margin = 850;

    const ReportBand& band(BandKind kind) const { return bands[static_cast<std::size_t>(kind)]; }
    ReportBand& band(BandKind kind) { return bands[static_cast<std::size_t>(kind)]; }
};

/// A layout of bands over a record set: heads and feet of the report and of each page, and one detail band for each
/// row.
class BandedReport {
public:
    /// `name` is what errors call it, `caption` the title of its window.
    BandedReport(std::string name, std::string caption);
    BandedReport(const BandedReport&) = delete;
    BandedReport& operator=(const BandedReport&) = delete;
    virtual ~BandedReport() = default;

    std::string Caption;
    /// The rows to print, in their order. Their position is neither used nor changed.
    std::shared_ptr<Recordset> DataSource;

    const std::string& name() const { return name_; }
    /// A band by name, without regard to case. Throws std::out_of_range, in Spanish.
    ReportBand& Section(std::string_view name);

    /// The pages as the report stands now, made from the rows as they are asked for. Throws std::runtime_error, in
    /// Spanish, when a bound field is no column of the rows.
    std::shared_ptr<const PagedDocument> document(const Date& printed) const;
    /// Shows the pages in a modal preview and returns when it is closed. Throws as document() does.
    void Show(Desktop& desktop) const;

protected:
    ReportLayout layout_;

private:
    std::string name_;
};

}  // namespace FendaMaestros
