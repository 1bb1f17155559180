#include "ui/BandedReport.h"

#include <algorithm>

#include "toolkit/Format.h"
#include "toolkit/Text.h"
#include "ui/frmVistaPrevia.h"

namespace FendaMaestros {

namespace {

/// What "%p", "%P" and "%d" stand for.
struct Running {
    int page = 0;
    int pages = 0;
    std::string date;
};

std::string expanded(std::string_view caption, const Running& running) {
    std::string result;
    for (std::size_t at = 0; at < caption.size(); ++at) {
        const char mark = caption[at] == '%' && at + 1 < caption.size() ? caption[at + 1] : '\0';
        if (mark == 'p')
            result += std::to_string(running.page);
        else if (mark == 'P')
            result += std::to_string(running.pages);
        else if (mark == 'd')
            result += running.date;
        else {
            result += caption[at];
            continue;
        }
        ++at;
    }
    return result;
}

/// Of a text that stands in one line what its box may hold: what is far beyond it goes. No letter is narrower than a
/// fifth of its size.
std::string beginning(const std::string& text, const Placement& place, const Typeface& face) {
    const int narrowest = std::max(1, face.points * 20 / 5);
    return text::left(text, static_cast<std::size_t>(place.width / narrowest + 1));
}

PageText placed(const Placement& place, const Typeface& face, Twips left, Twips top, const std::string& text,
                bool whole = false) {
    return {.left = left + place.left,
            .top = top + place.top,
            .width = place.width,
            .height = place.height,
            .text = text::printable(whole ? text : beginning(text, place, face)),
            .font = face.family,
            .points = face.points,
            .bold = face.bold,
            .alignment = face.alignment,
            .whole = whole};
}

int rowsWithin(Twips room, Twips rowHeight) { return std::max(1, room / std::max(1, rowHeight)); }

/// Bands have fixed heights, so that where each row stands is arithmetic and a page reads its own rows only.
class BandedDocument final : public PagedDocument {
public:
    BandedDocument(std::string title, ReportLayout layout, std::shared_ptr<const Recordset> rows,
                   std::vector<int> columns, const Date& printed)
        : title_(std::move(title)),
          layout_(std::move(layout)),
          rows_(std::move(rows)),
          columns_(std::move(columns)),
          date_(printed.text()),
          rowCount_(rows_ ? rows_->rowCount() : 0) {
        const Twips room = bottom() - layout_.margin - height(BandKind::PageHeader);
        rowsFirst_ = rowsWithin(room - height(BandKind::ReportHeader), height(BandKind::Detail));
        rowsNext_ = rowsWithin(room, height(BandKind::Detail));
    }

    std::string title() const override { return title_; }
    Twips pageWidth() const override { return layout_.pageWidth; }
    Twips pageHeight() const override { return layout_.pageHeight; }

    int pageCount() const override {
        const int last = rowCount_ == 0 ? 0 : pageOf(rowCount_ - 1);
        const bool footerFits = detailTop(last) + (rowCount_ - firstRow(last)) * height(BandKind::Detail) +
                                    height(BandKind::ReportFooter) <=
                                bottom();
        return last + (footerFits ? 1 : 2);
    }

    Page page(int index) const override {
        Page page;
        const int pages = pageCount();
        const Running running{index + 1, pages, date_};
        Twips top = layout_.margin;
        if (index == 0) top = print(page, BandKind::ReportHeader, top, running);
        top = print(page, BandKind::PageHeader, top, running);
        const int end = std::min(rowCount_, firstRow(index + 1));
        for (int row = firstRow(index); row < end; ++row) {
            printFields(page, row, top);
            top = print(page, BandKind::Detail, top, running);
        }
        if (index == pages - 1) print(page, BandKind::ReportFooter, top, running);
        print(page, BandKind::PageFooter, bottom(), running);
        return page;
    }

private:
    Twips height(BandKind kind) const { return layout_.band(kind).Height; }
    /// Where the page footer begins.
    Twips bottom() const { return layout_.pageHeight - layout_.margin - height(BandKind::PageFooter); }
    Twips detailTop(int page) const {
        return layout_.margin + height(BandKind::PageHeader) + (page == 0 ? height(BandKind::ReportHeader) : 0);
    }
    int pageOf(int row) const { return row < rowsFirst_ ? 0 : 1 + (row - rowsFirst_) / rowsNext_; }
    int firstRow(int page) const {
        return page == 0 ? 0 : static_cast<int>(std::min<long long>(rowCount_, rowsFirst_ + (page - 1LL) * rowsNext_));
    }

    /// Prints what is fixed in a band; where the next one begins.
    Twips print(Page& page, BandKind kind, Twips top, const Running& running) const {
        const ReportBand& band = layout_.band(kind);
        for (const ReportLabel& label : band.Labels)
            page.texts.push_back(placed(label.place, label.face, layout_.margin, top,
                                        label.Literal ? label.Caption : expanded(label.Caption, running), label.Whole));
        for (const PageLine& line : band.Lines)
            page.lines.push_back({layout_.margin + line.left, top + line.top, line.width});
        return top + band.Height;
    }

    void printFields(Page& page, int row, Twips top) const {
        const auto& fields = layout_.band(BandKind::Detail).Fields;
        for (std::size_t i = 0; i < fields.size(); ++i)
            page.texts.push_back(placed(fields[i].place, fields[i].face, layout_.margin, top,
                                        format(rows_->cell(row, columns_[i]), fields[i].Mask)));
    }

    std::string title_;
    ReportLayout layout_;
    std::shared_ptr<const Recordset> rows_;
    /// Of each field of the detail band.
    std::vector<int> columns_;
    std::string date_;
    int rowCount_;
    int rowsFirst_ = 1, rowsNext_ = 1;
};

template <class T>
T& named(std::vector<T>& items, std::string_view name, const std::string& band) {
    const auto found = std::ranges::find_if(items, [&](const T& i) { return text::equalIgnoringCase(i.Name, name); });
    if (found == items.end())
        throw std::out_of_range("La sección " + band + " no tiene el control " + std::string(name) + ".");
    return *found;
}

}  // namespace

ReportLabel& ReportBand::Label(std::string_view name) { return named(Labels, name, Name); }

ReportField& ReportBand::Field(std::string_view name) { return named(Fields, name, Name); }

BandedReport::BandedReport(std::string name, std::string caption)
    : Caption(std::move(caption)), name_(std::move(name)) {
    layout_.band(BandKind::ReportHeader).Name = "Sección4";
    layout_.band(BandKind::PageHeader).Name = "Cabecera";
    layout_.band(BandKind::Detail).Name = "Lineas";
    layout_.band(BandKind::PageFooter).Name = "Sección3";
    layout_.band(BandKind::ReportFooter).Name = "Factura_Resumen";
}

ReportBand& BandedReport::Section(std::string_view name) {
    for (ReportBand& band : layout_.bands)
        if (text::equalIgnoringCase(band.Name, name)) return band;
    throw std::out_of_range("El informe " + name_ + " no tiene la sección " + std::string(name) + ".");
}

std::shared_ptr<const PagedDocument> BandedReport::document(const Date& printed) const {
    std::vector<int> columns;
    for (const ReportField& field : layout_.band(BandKind::Detail).Fields) {
        const int column = DataSource ? DataSource->columnIndex(field.DataField) : -1;
        if (column < 0)
            throw std::runtime_error("El campo " + field.DataField + " del informe " + name_ +
                                     " no está entre los datos que se listan.");
        columns.push_back(column);
    }
    return std::make_shared<BandedDocument>(Caption, layout_, DataSource, std::move(columns), printed);
}

void BandedReport::Show(Desktop& desktop) const {
    frmVistaPrevia preview(desktop, document(desktop.today()));
    preview.show();
}

}  // namespace FendaMaestros
