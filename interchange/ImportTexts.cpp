#include "interchange/ImportTexts.h"

#include <algorithm>
#include <filesystem>
#include <stdexcept>
#include <vector>

#include "toolkit/Format.h"
#include "toolkit/Text.h"
#include "ui/Csv.h"
#include "ui/PartialFile.h"

namespace FendaMaestros {

namespace {

std::string wrongRowsCsv(const ImportPreview& preview, const ImportForm& form) {
    std::string csv;
    if (form.header) {
        std::vector<std::string> headings = form.firstRow;
        headings.emplace_back("Motivo");
        csv += csvLine(headings);
    }
    for (const ImportRow& row : preview.rows()) {
        if (row.verdict != Verdict::Wrong) continue;
        std::vector<std::string> cells = row.cells;
        for (std::string& cell : cells)
            if (!cell.starts_with('\'')) cell = shieldedText(cell);
        cells.resize(std::max(cells.size(), form.firstRow.size()));
        cells.push_back(row.why);
        csv += csvLine(cells);
    }
    return csv;
}

}  // namespace

std::string_view wordOf(Verdict verdict) {
    switch (verdict) {
        case Verdict::New:
            return "nueva";
        case Verdict::Changes:
            return "cambia";
        case Verdict::Same:
            return "igual";
        case Verdict::Wrong:
            return "errónea";
    }
    return {};
}

std::string changesText(const ImportRow& row) {
    std::string changes;
    for (const FieldChange& change : row.changes)
        changes += (changes.empty() ? "" : ", ") + change.field + " «" + change.from + "» → «" + change.to + "»";
    return changes;
}

std::string countsText(const ImportCounts& counts) {
    const auto words = [](std::int64_t count, const char* one, const char* many) {
        return counted(static_cast<int>(count), one, many);
    };
    return words(counts.added, "nueva", "nuevas") + ", " + words(counts.changed, "con cambios", "con cambios") + ", " +
           words(counts.same, "igual", "iguales") + " y " + words(counts.wrong, "errónea", "erróneas");
}

std::string columnName(const ImportForm& form, int column) {
    const auto index = static_cast<std::size_t>(column);
    std::string name = std::to_string(column + 1);
    if (form.header && index < form.firstRow.size()) name += " «" + text::printable(form.firstRow[index]) + "»";
    return name;
}

std::string unusedText(const ImportForm& form) {
    std::string unused;
    for (int column = 0; column < std::ssize(form.firstRow); ++column)
        if (!form.columns.uses(column)) unused += (unused.empty() ? "" : ", ") + columnName(form, column);
    return unused;
}

void writeWrongRows(const ImportPreview& preview, const ImportForm& form, const std::string& source,
                    const std::string& target) {
    std::error_code notThere;
    if (std::filesystem::equivalent(source, target, notThere))
        throw std::runtime_error("No se puede guardar \"" + target + "\": es el fichero que se importa.");
    PartialFile file(target);
    file.write(wrongRowsCsv(preview, form));
    file.commit();
}

}  // namespace FendaMaestros
