#include "platform/xlsx/Hoja.h"

#include <locale.h>
#include <xlsxwriter.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <utility>

#include "platform/xlsx/CellText.h"
#include "toolkit/Format.h"
#include "toolkit/Text.h"

namespace FendaMaestros {

namespace {

constexpr int twipsPerPixel = 15;
constexpr int widestColumn = 1790;                      ///< pixels
constexpr int portraitWidth = 700;                      ///< pixels between the margins of an upright sheet of A4
constexpr double smallMargin = 0.5, footMargin = 0.75;  ///< inches
constexpr std::size_t longestProperty = 255;
constexpr std::int64_t largestExact = 999'999'999'999'999;  ///< a sheet keeps 15 digits

/// The library writes numbers in the thread's locale, and a decimal comma would spoil the file.
class DecimalPoint {
public:
    DecimalPoint() : c_(::newlocale(LC_NUMERIC_MASK, "C", nullptr)), previous_(::uselocale(c_)) {}
    DecimalPoint(const DecimalPoint&) = delete;
    DecimalPoint& operator=(const DecimalPoint&) = delete;
    ~DecimalPoint() {
        ::uselocale(previous_);
        ::freelocale(c_);
    }

private:
    locale_t c_;
    locale_t previous_;
};

void check(lxw_error error) {
    if (error == LXW_NO_ERROR) return;
    const bool full = error == LXW_ERROR_ZIP_FILE_OPERATION || error == LXW_ERROR_ZIP_FILE_ADD ||
                      error == LXW_ERROR_ZIP_CLOSE || error == LXW_ERROR_CREATING_TMPFILE;
    throw std::runtime_error(full ? "No se puede guardar la hoja de cálculo: no queda sitio en el disco."
                                  : "No se puede guardar la hoja de cálculo: error " + std::to_string(error) +
                                        " al escribirla.");
}

/// The mask as the sheet understands it: what stands behind the digits is a text there too.
std::string sheetFormat(const std::string& mask) {
    const auto last = mask.find_last_of("0#");
    if (last == std::string::npos) return {};
    const std::string tail = mask.substr(last + 1);
    if (tail.find_first_not_of(' ') == std::string::npos) return mask;
    return mask.substr(0, last + 1) + '"' + text::replaced(tail, "\"", "") + '"';
}

std::uint8_t sheetAlignment(Alignment alignment) {
    switch (alignment) {
        case Alignment::Right:
            return LXW_ALIGN_RIGHT;
        case Alignment::Center:
            return LXW_ALIGN_CENTER;
        case Alignment::Left:
            break;
    }
    return LXW_ALIGN_LEFT;
}

std::vector<GridColumn> visibleOf(const std::vector<GridColumn>& columns) {
    std::vector<GridColumn> visible;
    for (const GridColumn& column : columns)
        if (column.Visible) visible.push_back(column);
    return visible;
}

lxw_row_t headingRow(const std::string& title) { return title.empty() ? 0 : 1; }

/// A workbook of one sheet, row by row. Dropping it before close() leaves no finished file.
class Hoja {
public:
    Hoja(const std::string& path, const std::vector<GridColumn>& columns)
        : columns_(visibleOf(columns)), formats_(columns_.size()) {
        lxw_workbook_options options{};
        options.constant_memory = LXW_TRUE;
        book_ = workbook_new_opt(path.c_str(), &options);
        sheet_ = book_ ? workbook_add_worksheet(book_, "Listado") : nullptr;
        if (sheet_ && sheet_->optimize_tmpfile) return;
        if (book_) lxw_workbook_free(book_);
        check(LXW_ERROR_CREATING_TMPFILE);
    }
    Hoja(const Hoja&) = delete;
    Hoja& operator=(const Hoja&) = delete;
    ~Hoja() {
        if (book_) lxw_workbook_free(book_);
    }

    void writeHeading(const std::string& title) {
        const lxw_row_t heading = headingRow(title);
        setUpColumns();
        setUpPage(heading);
        if (!title.empty()) writeTitle(title);
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            lxw_format* format = newFormat(columns_[i]);
            format_set_bold(format);
            format_set_bottom(format, LXW_BORDER_THIN);
            writeText(heading, i, columns_[i].Caption, format);
        }
    }

    void writeRow(lxw_row_t at, const Recordset& rows, int row) {
        for (std::size_t i = 0; i < columns_.size(); ++i) writeCell(at, i, rows, row);
    }

    void close() {
        checkRoom();
        lxw_workbook* const book = std::exchange(book_, nullptr);
        check(workbook_close(book));
    }

private:
    lxw_format* newFormat(const GridColumn& column) {
        lxw_format* format = workbook_add_format(book_);
        format_set_align(format, sheetAlignment(column.TextAlignment));
        return format;
    }

    void setUpColumns() {
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            formats_[i] = newFormat(columns_[i]);
            const std::string number = sheetFormat(columns_[i].NumberFormat);
            if (!number.empty()) format_set_num_format(formats_[i], number.c_str());
            const auto at = static_cast<lxw_col_t>(i);
            check(worksheet_set_column_pixels(sheet_, at, at, pixels(columns_[i]), formatOfTexts(i)));
        }
    }

    /// None for texts that stand where a sheet puts them by itself: the library looks a format up for every cell.
    lxw_format* formatOfTexts(std::size_t column) const {
        const GridColumn& shown = columns_[column];
        const bool plain = shown.TextAlignment == Alignment::Left && shown.NumberFormat.empty();
        return plain ? nullptr : formats_[column];
    }

    static std::uint32_t pixels(const GridColumn& column) {
        return static_cast<std::uint32_t>(std::clamp(column.Width / twipsPerPixel, 1, widestColumn));
    }

    void setUpPage(lxw_row_t heading) {
        std::uint32_t width = 0;
        for (const GridColumn& column : columns_) width += pixels(column);
        worksheet_set_paper(sheet_, 9);  // A4
        if (width > portraitWidth) worksheet_set_landscape(sheet_);
        worksheet_fit_to_pages(sheet_, 1, 0);
        worksheet_set_margins(sheet_, smallMargin, smallMargin, smallMargin, footMargin);
        check(worksheet_set_footer(sheet_, "&RPágina &P de &N"));
        check(worksheet_repeat_rows(sheet_, 0, heading));
        worksheet_freeze_panes(sheet_, heading + 1, 0);
    }

    void writeTitle(const std::string& title) {
        lxw_format* format = workbook_add_format(book_);
        format_set_bold(format);
        format_set_font_size(format, 14);
        writeText(0, 0, title, format);
        toCellText(text::left(title, longestProperty), buffer_);
        lxw_doc_properties properties{};
        properties.title = buffer_.data();
        check(workbook_set_properties(book_, &properties));
    }

    void writeText(lxw_row_t at, std::size_t column, std::string_view text, lxw_format* format) {
        toCellText(text, buffer_);
        escapeCodes(buffer_);
        check(worksheet_write_string(sheet_, at, static_cast<lxw_col_t>(column), buffer_.c_str(), format));
    }

    void writeCell(lxw_row_t at, std::size_t column, const Recordset& rows, int row) {
        const GridColumn& shown = columns_[column];
        const std::string_view text = rows.textView(row, shown.SourceColumn);
        if (!text.empty() && shown.NumberFormat.empty()) return writeText(at, column, text, formatOfTexts(column));

        const Variant value = rows.cell(row, shown.SourceColumn);
        if (value.isNull()) return;
        if (isCode(shown) || !isNumberOfSheet(value))
            return writeText(at, column, format(value, shown.NumberFormat), formatOfTexts(column));
        check(worksheet_write_number(sheet_, at, static_cast<lxw_col_t>(column), value.real(), formats_[column]));
    }

    /// A code is not counted with, although a table may keep it as a number: listings centre their codes.
    static bool isCode(const GridColumn& column) {
        return column.TextAlignment == Alignment::Center && column.NumberFormat.empty();
    }

    static bool isNumberOfSheet(const Variant& value) {
        if (std::holds_alternative<std::string>(value.storage())) return false;
        if (const auto* whole = std::get_if<std::int64_t>(&value.storage()))
            return *whole >= -largestExact && *whole <= largestExact;
        return std::isfinite(value.real());
    }

    /// The library does not look whether the rows reached the temporary file, nor the small parts that follow them.
    void checkRoom() {
        constexpr std::uintmax_t enoughForParts = 1 << 20;
        const bool written = std::fflush(sheet_->optimize_tmpfile) == 0 && !std::ferror(sheet_->optimize_tmpfile);
        std::error_code code;
        const auto space = std::filesystem::space(std::filesystem::temp_directory_path(code), code);
        if (!written || (!code && space.available < enoughForParts)) check(LXW_ERROR_CREATING_TMPFILE);
    }

    std::vector<GridColumn> columns_;
    std::vector<lxw_format*> formats_;
    lxw_workbook* book_ = nullptr;
    lxw_worksheet* sheet_ = nullptr;
    std::string buffer_;
};

}  // namespace

void checkFits(const Recordset& rows, const std::string& title) {
    const auto room = static_cast<int>(LXW_ROW_MAX - headingRow(title) - 1);
    if (rows.rowCount() <= room) return;
    throw std::runtime_error("El listado tiene " + std::to_string(rows.rowCount()) +
                             " filas y en una hoja de cálculo caben " + std::to_string(room) +
                             ". Acote el listado y vuelva a exportarlo.");
}

void writeSheet(const std::string& path, const std::string& title, const Recordset& rows,
                const std::vector<GridColumn>& columns) {
    for (const GridColumn& column : columns)
        if (column.Visible && column.SourceColumn >= rows.columnCount())
            throw std::runtime_error("La columna " + column.Caption + " no está entre los datos que se exportan.");
    const DecimalPoint decimalPoint;
    Hoja sheet(path, columns);
    sheet.writeHeading(title);
    const lxw_row_t first = headingRow(title) + 1;
    for (int row = 0; row < rows.rowCount(); ++row) sheet.writeRow(first + static_cast<lxw_row_t>(row), rows, row);
    sheet.close();
}

}  // namespace FendaMaestros
