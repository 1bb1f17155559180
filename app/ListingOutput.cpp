#include "app/ListingOutput.h"

#include "app/StandardStreams.h"
#include "ui/PartialFile.h"

namespace FendaMaestros {

namespace {

void writeSpreadsheet(UnattendedCompany& company, const Listing& listing, const ListingMark& mark,
                      const std::string& path) {
    ListingGrid grid;
    grid.show(listing.rows, listing.columns);
    grid.markOrder(mark.column, mark.caption, mark.ascending);
    company.saveTo(path);
    grid.exportRows({});
    tellWritten(path);
}

}  // namespace

void writeText(const std::string& text, const std::string& path) {
    if (path.empty() || path == "-") return writeOutput(text);
    PartialFile file(path);
    file.write(text);
    file.commit();
    tellWritten(path);
}

void writeListing(UnattendedCompany& company, const Listing& listing, const ListingMark& mark,
                  const ListingOutput& output) {
    switch (output.kind) {
        case ListingOutput::Kind::Csv:
            return writeText(csvText(listing), output.path);
        case ListingOutput::Kind::Json:
            return writeText(jsonText(listing), output.path);
        case ListingOutput::Kind::Xlsx:
            return writeSpreadsheet(company, listing, mark, output.path);
        case ListingOutput::Kind::Table:
        case ListingOutput::Kind::Pdf:
            break;
    }
    writeText(tableText(listing), output.path);
}

void tellWritten(const std::string& path) { writeOutput("Se ha guardado " + path + "\n"); }

}  // namespace FendaMaestros
