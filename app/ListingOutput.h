#pragma once

#include <functional>
#include <string>

#include "app/ListingTexts.h"
#include "app/UnattendedCompany.h"

namespace FendaMaestros {

/// Where a listing goes.
struct ListingOutput {
    enum class Kind { Table, Csv, Json, Xlsx, Pdf };

    Kind kind = Kind::Table;
    /// Of a file; empty or "-" for standard output, where spreadsheets and PDF files do not go.
    std::string path;
};

/// How a listing is ordered: the grid column, and its caption while it is.
struct ListingMark {
    int column;
    std::string caption;
    bool ascending;
};

/// Writes a spreadsheet or a text of the listing. A file is written whole or not at all, and a line on standard output
/// then tells so. Throws std::exception, in Spanish.
void writeListing(UnattendedCompany& company, const Listing& listing, const ListingMark& mark,
                  const ListingOutput& output);
/// Writes a text to a file, whole or not at all, and tells so; to standard output when `path` is empty or "-". Throws
/// std::exception, in Spanish.
void writeText(const std::string& text, const std::string& path);
/// Tells that what the command was asked for lies in a file.
void tellWritten(const std::string& path);

}  // namespace FendaMaestros
